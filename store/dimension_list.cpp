#include "store/python.hpp"

#include "store/dimension_list.hpp"

namespace mox {

namespace {

constexpr std::int64_t most_elements = std::int64_t{1} << 24;

[[noreturn]] void raise(PyObject* exception, const char* format, PyObject* object) {
    PyErr_Format(exception, format, object);
    throw python_error{};
}

std::int64_t extent_of(PyObject* item) {
    if (PyFloat_Check(item) || !PyIndex_Check(item))
        raise(PyExc_TypeError,
              "The dimensions of a metadata entry must be integers, current has : %R", item);
    const auto extent =
        PyNumber_AsSsize_t(item, nullptr); // beyond its range: the nearest value in it
    if (extent == -1 && PyErr_Occurred())
        throw python_error{};
    if (extent < 0)
        raise(PyExc_ValueError,
              "The dimensions of a metadata entry cannot be negative, current has : %R", item);
    return extent;
}

} // namespace

std::vector<std::int64_t> dimension_list(PyObject* value) {
    if (!PyList_Check(value) && !PyTuple_Check(value) && !PyArray_Check(value))
        raise(PyExc_TypeError,
              "The dimensions of a metadata entry must be a list of integers, current is : %R",
              value);
    const auto items = py_ref::checked(PySequence_Tuple(value));
    std::vector<std::int64_t> extents;
    std::int64_t product = 1;
    for (Py_ssize_t i = 0; i < PyTuple_GET_SIZE(items.get()); ++i) {
        extents.push_back(extent_of(PyTuple_GET_ITEM(items.get(), i)));
        if (extents.back() != 0 && product > most_elements / extents.back())
            raise(PyExc_ValueError,
                  "The dimensions of a metadata entry are too large, current are : %R", value);
        product *= extents.back();
    }
    return extents;
}

} // namespace mox
