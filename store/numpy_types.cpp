#include "store/python.hpp"

#include "store/numpy_types.hpp"

#include <array>

#include "store/nesting.hpp"
#include "store/swig_error.hpp"

namespace mox {

namespace {

using strata::data_type;

// Kinds and widths, not type numbers: the platforms differ in which C type has 32 or 64 bits.
constexpr std::array<int, 13> numpy_types{
    NPY_NOTYPE, NPY_BOOL,  NPY_INT8,   NPY_UINT8,   NPY_INT16,   NPY_UINT16, NPY_INT32,
    NPY_UINT32, NPY_INT64, NPY_UINT64, NPY_FLOAT32, NPY_FLOAT64, NPY_UNICODE};

constexpr data_type signed_of_width(std::size_t width) noexcept {
    return width == 4 ? data_type::int32 : data_type::int64;
}
constexpr data_type unsigned_of_width(std::size_t width) noexcept {
    return width == 4 ? data_type::uint32 : data_type::uint64;
}

data_type store_type_of_list(PyObject* list) {
    const nesting level("looking for the element type of a list");
    auto common = data_type::invalid;
    for (Py_ssize_t i = 0; i < PyList_GET_SIZE(list); ++i) {
        const auto item = py_ref::borrow(PyList_GET_ITEM(list, i));
        const auto type = store_type_of_value(item.get());
        if (type == data_type::invalid || (i != 0 && type != common))
            return data_type::invalid;
        common = type;
    }
    return common;
}

} // namespace

int numpy_type_of(data_type type) {
    const auto kind = strata::element_kind(type);
    if (kind == data_type::invalid)
        throw_runtime_error("Unexpected internal type to convert to a corresponding NumPy type");
    return numpy_types[static_cast<std::size_t>(kind)];
}

data_type store_type_of_array(PyArrayObject* array) noexcept {
    switch (PyArray_TYPE(array)) {
    case NPY_BOOL:
        return data_type::boolean;
    case NPY_BYTE:
        return data_type::int8;
    case NPY_UBYTE:
        return data_type::uint8;
    case NPY_SHORT:
        return data_type::int16;
    case NPY_USHORT:
        return data_type::uint16;
    case NPY_INT:
        return signed_of_width(sizeof(int));
    case NPY_UINT:
        return unsigned_of_width(sizeof(int));
    case NPY_LONG:
        return signed_of_width(sizeof(long));
    case NPY_ULONG:
        return unsigned_of_width(sizeof(long));
    case NPY_LONGLONG:
        return data_type::int64;
    case NPY_ULONGLONG:
        return data_type::uint64;
    case NPY_FLOAT:
        return data_type::float32;
    case NPY_DOUBLE:
        return data_type::float64;
    case NPY_STRING:
    case NPY_UNICODE:
        return data_type::string;
    default:
        return data_type::invalid;
    }
}

data_type store_type_of_value(PyObject* value) {
    if (PyArray_Check(value))
        return store_type_of_array(reinterpret_cast<PyArrayObject*>(value));
    if (PyUnicode_Check(value) || PyBytes_Check(value))
        return data_type::string;
    if (PyFloat_Check(value))
        return data_type::float64;
    if (PyLong_Check(value))
        return data_type::int64;
    if (PyList_Check(value))
        return store_type_of_list(value);
    return data_type::invalid;
}

strata::data_shape shape_of_value(PyObject* value) {
    std::vector<std::int64_t> dimensions;
    if (PyArray_Check(value)) {
        auto* array = reinterpret_cast<PyArrayObject*>(value);
        dimensions.assign(PyArray_DIMS(array), PyArray_DIMS(array) + PyArray_NDIM(array));
        return {std::move(dimensions), false};
    }
    // A list may contain itself: nothing nests deeper than NumPy's own limit.
    PyObject* level = value;
    while (PyList_Check(level) && dimensions.size() <= NPY_MAXDIMS) {
        dimensions.push_back(PyList_GET_SIZE(level));
        if (PyList_GET_SIZE(level) == 0)
            break;
        level = PyList_GET_ITEM(level, 0);
    }
    return {std::move(dimensions), false};
}

py_ref new_array(const strata::data_shape& shape, int type) {
    std::vector<npy_intp> dimensions(shape.dimensions().begin(), shape.dimensions().end());
    return py_ref::checked(
        PyArray_SimpleNew(static_cast<int>(dimensions.size()), dimensions.data(), type));
}

} // namespace mox
