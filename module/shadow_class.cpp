#include "store/python.hpp"

#include "module/shadow_class.hpp"

#include "module/handle_proxy.hpp"

namespace mox {

namespace {

PyObject* shadow_class = nullptr; // lives as long as the process, as the proxies' type does

} // namespace

void register_shadow_class(PyObject* shadow) {
    const bool makes_instances =
        PyType_Check(shadow) && reinterpret_cast<PyTypeObject*>(shadow)->tp_new;
    if (!makes_instances) {
        PyErr_Format(
            PyExc_TypeError,
            "in method 'data_store_swigregister', argument 1 of type 'PyObject *': a class is "
            "expected, not '%s'",
            Py_TYPE(shadow)->tp_name);
        throw python_error{};
    }
    Py_XSETREF(shadow_class, Py_NewRef(shadow));
}

py_ref with_shadow(py_ref proxy) {
    if (!shadow_class)
        return proxy;
    const auto type = py_ref::borrow(shadow_class);
    const auto no_arguments = py_ref::checked(PyTuple_New(0));
    auto* python_class = reinterpret_cast<PyTypeObject*>(type.get());
    auto instance =
        py_ref::checked(python_class->tp_new(python_class, no_arguments.get(), nullptr));
    if (PyObject_SetAttr(instance.get(), this_name(), proxy.get()) < 0)
        throw python_error{};
    return instance;
}

void initialise_shadow(PyObject* instance, PyObject* handle) {
    const auto proxy = proxy_of(handle);
    if (!proxy && PyErr_Occurred())
        throw python_error{};
    if (!proxy) {
        PyErr_SetString(
            PyExc_TypeError,
            "in method 'data_store_swiginit', argument 2 of type 'strata::data_store *'");
        throw python_error{};
    }
    if (PyObject_SetAttr(instance, this_name(), proxy.get()) < 0)
        throw python_error{};
}

} // namespace mox
