#include "store/python.hpp"

#include "api/channels/matrix_check.hpp"

#include <fmt/format.h>

#include "store/frozen_lists.hpp"
#include "store/matrix_writer.hpp"
#include "store/swig_error.hpp"

namespace mox {

namespace {

/// A masked array with NaN where it is masked; anything else as it is. An array of integers has no
/// NaN and keeps its mask: it is no matrix of values.
py_ref without_mask(PyObject* value) {
    if (!PyArray_Check(value) || PyArray_CheckExact(value) ||
        !PyArray_ISFLOAT(reinterpret_cast<PyArrayObject*>(value)))
        return py_ref::borrow(value);
    const auto masked_array = py_ref::checked(PyImport_ImportModule("numpy.ma"));
    const auto type = py_ref::checked(PyObject_GetAttrString(masked_array.get(), "MaskedArray"));
    const int is_masked = PyObject_IsInstance(value, type.get());
    if (is_masked == -1)
        throw python_error{};
    if (is_masked == 0)
        return py_ref::borrow(value);
    return py_ref::checked(PyObject_CallMethod(value, "filled", "d", Py_NAN));
}

} // namespace

py_ref as_array(PyObject* value) {
    if (PyArray_Check(value))
        return without_mask(value);
    if (!PyList_Check(value) && !PyTuple_Check(value))
        return py_ref::borrow(value);
    return py_ref::checked(PyArray_FromAny(frozen_lists(value).get(), nullptr, 0, 0, 0, nullptr));
}

std::optional<std::uint64_t> row_count(const py_ref& array) {
    if (!PyArray_Check(array.get()) || PyArray_NDIM(array.array()) != 2)
        return std::nullopt;
    return static_cast<std::uint64_t>(PyArray_DIM(array.array(), 0));
}

void check_point_matrix(const py_ref& array, std::uint64_t frames, std::uint64_t channels,
                        std::uint64_t components) {
    if (!PyArray_Check(array.get()))
        throw_wrong_matrix_type();
    const int dimensions = PyArray_NDIM(array.array());
    if (dimensions != 2)
        throw_runtime_error(
            fmt::format("Given matrix should have 2 dimensions, current has : {}", dimensions));
    const auto rows = static_cast<std::uint64_t>(PyArray_DIM(array.array(), 0));
    if (rows != frames) {
        throw_runtime_error(
            // Kept with the blank before the comma: scripts compare this text.
            fmt::format("Given matrix should have row number equals to the number of frames in the "
                        "acquisition , current has : {}",
                        rows));
    }
    const auto columns = static_cast<std::uint64_t>(PyArray_DIM(array.array(), 1));
    if (columns != channels * components) {
        throw_runtime_error(
            fmt::format("Given matrix should have column number equals to the number of extracted "
                        "points multiplied by {}, current has : {}",
                        components, columns));
    }
}

py_ref checked_matrix(const py_ref& array, std::uint64_t frames, std::uint64_t channels,
                      std::uint64_t components) {
    check_point_matrix(array, frames, channels, components);
    return as_matrix(array.get());
}

} // namespace mox
