#include "store/python.hpp"

#include "store/list_elements.hpp"

namespace mox {

namespace {

[[noreturn]] void raise_ragged() {
    PyErr_SetString(PyExc_ValueError, "The nested lists of the given value have different lengths");
    throw python_error{};
}

/// The code of an array's subclass could change the entry that the list is written to.
[[noreturn]] void raise_array_in_list() {
    PyErr_SetString(PyExc_ValueError, "A list of values cannot have arrays in it");
    throw python_error{};
}

void flatten(PyObject* list, const std::vector<std::int64_t>& dimensions, std::size_t level,
             std::vector<py_ref>& items) {
    if (!PyList_Check(list) || PyList_GET_SIZE(list) != dimensions[level])
        raise_ragged();
    const bool innermost = level + 1 == dimensions.size();
    for (Py_ssize_t i = 0; i < PyList_GET_SIZE(list); ++i) {
        auto item = py_ref::borrow(PyList_GET_ITEM(list, i));
        if (!innermost)
            flatten(item.get(), dimensions, level + 1, items);
        else if (PyList_Check(item.get()))
            raise_ragged();
        else if (PyArray_Check(item.get()))
            raise_array_in_list();
        else
            items.push_back(std::move(item));
    }
}

} // namespace

std::vector<py_ref> flatten_list(PyObject* list, const strata::data_shape& shape) {
    std::vector<py_ref> items;
    if (shape.dimensions().empty())
        raise_ragged();
    flatten(list, shape.dimensions(), 0, items);
    return items;
}

} // namespace mox
