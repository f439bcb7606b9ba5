#include "store/python.hpp"

#include "module/log_at_exit.hpp"

#include "module/application.hpp"

namespace mox {

namespace {

PyObject* flush_log(PyObject*, PyObject*) {
    module_logger()->flush();
    Py_RETURN_NONE;
}

PyMethodDef flush_definition{"flush_log", &flush_log, METH_NOARGS, nullptr};

/// Versions of Python before 3.13 run no functions of `atexit` in such a process, but these.
void register_with_multiprocessing(PyObject* function) {
    auto* const utilities =
        PyDict_GetItemString(PyImport_GetModuleDict(), "multiprocessing.util"); // borrowed
    if (!utilities)
        return;
    const auto finalize = py_ref::checked(PyObject_GetAttrString(utilities, "Finalize"));
    const auto arguments = py_ref::checked(Py_BuildValue("(OO)", Py_None, function));
    const auto priority = py_ref::checked(Py_BuildValue("{si}", "exitpriority", 0));
    (void)py_ref::checked(PyObject_Call(finalize.get(), arguments.get(), priority.get()));
}

} // namespace

void complete_log_at_exit() {
    static bool is_registered = false;
    if (is_registered)
        return;
    const auto function = py_ref::checked(PyCFunction_New(&flush_definition, nullptr));
    const auto module = py_ref::checked(PyImport_ImportModule("atexit"));
    (void)py_ref::checked(PyObject_CallMethod(module.get(), "register", "O", function.get()));
    register_with_multiprocessing(function.get());
    is_registered = true;
}

} // namespace mox
