#include "store/python.hpp"

#include "store/frozen_lists.hpp"

#include <algorithm>
#include <vector>

#include "store/nesting.hpp"

namespace mox {

namespace {

bool has_attribute(PyObject* value, const char* name) {
    const auto attribute = py_ref::steal(PyObject_GetAttrString(value, name));
    if (attribute)
        return true;
    forget_answer();
    if (PyErr_Occurred())
        throw python_error{};
    return false;
}

/// True for what NumPy takes item by item: not for arrays, what stands for an array, and texts.
bool has_items(PyObject* value) {
    if (PyFloat_Check(value) || PyLong_Check(value) || PyArray_Check(value))
        return false;
    if (PyList_Check(value) || PyTuple_Check(value))
        return true;
    return PySequence_Check(value) && !PyUnicode_Check(value) && !PyObject_CheckBuffer(value) &&
           !has_attribute(value, "__array__") && !has_attribute(value, "__array_interface__") &&
           !has_attribute(value, "__array_struct__");
}

/// `path` holds the sequences that lead to `value`.
py_ref frozen(PyObject* value, std::vector<PyObject*>& path) {
    if (!has_items(value))
        return py_ref::borrow(value);
    const nesting level("reading a list");
    if (std::ranges::find(path, value) != path.end()) {
        PyErr_SetString(PyExc_ValueError, "The given list holds itself");
        throw python_error{};
    }
    path.push_back(value);
    const auto given = py_ref::checked(PySequence_Tuple(value));
    std::vector<py_ref> items;
    items.reserve(static_cast<std::size_t>(PyTuple_GET_SIZE(given.get())));
    for (Py_ssize_t i = 0; i < PyTuple_GET_SIZE(given.get()); ++i)
        items.push_back(frozen(PyTuple_GET_ITEM(given.get(), i), path));
    path.pop_back();
    auto tuple = py_ref::checked(PyTuple_New(PyTuple_GET_SIZE(given.get())));
    for (std::size_t i = 0; i < items.size(); ++i)
        PyTuple_SET_ITEM(tuple.get(), static_cast<Py_ssize_t>(i), items[i].release());
    return tuple;
}

} // namespace

py_ref frozen_lists(PyObject* value) {
    std::vector<PyObject*> path;
    return frozen(value, path);
}

} // namespace mox
