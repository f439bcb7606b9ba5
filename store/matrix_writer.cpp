#include "store/python.hpp"

#include "store/matrix_writer.hpp"

#include <array>
#include <vector>

#include "store/frozen_lists.hpp"
#include "store/numpy_types.hpp"
#include "store/swig_error.hpp"
#include "store/typed_access.hpp"

namespace mox {

void throw_wrong_matrix_type() {
    throw_runtime_error(
        "Given matrix should have type as float or double, maybe try casting your array "
        "matrix.astype(np.float64) or matrix.astype(np.float32)");
}

py_ref as_matrix(PyObject* value) {
    auto array = py_ref::borrow(value);
    if (PyList_Check(value) || PyTuple_Check(value))
        array =
            py_ref::checked(PyArray_FromAny(frozen_lists(value).get(), nullptr, 0, 0, 0, nullptr));
    const bool is_real = PyArray_Check(array.get()) && (PyArray_TYPE(array.array()) == NPY_FLOAT ||
                                                        PyArray_TYPE(array.array()) == NPY_DOUBLE);
    if (!is_real)
        throw_wrong_matrix_type();
    return py_ref::checked(PyArray_FromAny(
        array.get(), PyArray_DescrFromType(NPY_DOUBLE), 0, 0,
        NPY_ARRAY_CARRAY_RO | NPY_ARRAY_NOTSWAPPED | NPY_ARRAY_ENSUREARRAY, nullptr));
}

void write_matrix_rows(strata::data_set set, PyArrayObject* matrix, std::uint64_t first_column,
                       row_range rows) {
    const auto components = static_cast<std::uint64_t>(set.shape(false).dimensions().front());
    const auto width = static_cast<std::uint64_t>(PyArray_DIM(matrix, 1));
    const auto* cells =
        static_cast<const double*>(PyArray_DATA(matrix)) + rows.first * width + first_column;
    std::vector<double> elements(components * rows.count);
    for (std::uint64_t component = 0; component < components; ++component) {
        for (std::uint64_t row = 0; row < rows.count; ++row)
            elements[component * rows.count + row] = cells[row * width + component];
    }
    const std::array<std::uint64_t, 6> box{0, components, 0, 1, rows.first, rows.count};
    write_vector(set.select(box.data(), box.size(), true), elements);
}

void write_matrix_columns(const strata::data_set& set, PyArrayObject* matrix,
                          std::uint64_t first_column) {
    const auto samples = static_cast<std::uint64_t>(set.shape(false).dimensions().back());
    write_matrix_rows(set, matrix, first_column, {0, samples});
}

} // namespace mox
