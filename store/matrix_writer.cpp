#include "store/python.hpp"

#include "store/matrix_writer.hpp"

#include <vector>

#include "store/numpy_types.hpp"
#include "store/swig_error.hpp"
#include "store/typed_access.hpp"

namespace mox {

py_ref as_matrix(PyObject* value) {
    auto array = py_ref::borrow(value);
    if (PyList_Check(value) || PyTuple_Check(value))
        array = py_ref::checked(PyArray_FromAny(value, nullptr, 0, 0, 0, nullptr));
    const bool is_real = PyArray_Check(array.get()) &&
                         (PyArray_TYPE(array.array()) == NPY_FLOAT || PyArray_TYPE(array.array()) == NPY_DOUBLE);
    if (!is_real) {
        throw_runtime_error("Given matrix should have type as float or double, maybe try casting your array "
                            "matrix.astype(np.float64) or matrix.astype(np.float32)");
    }
    return py_ref::checked(PyArray_FromAny(array.get(), PyArray_DescrFromType(NPY_DOUBLE), 0, 0,
                                           NPY_ARRAY_CARRAY_RO | NPY_ARRAY_NOTSWAPPED | NPY_ARRAY_ENSUREARRAY,
                                           nullptr));
}

void write_matrix_columns(const strata::data_set& set, PyArrayObject* matrix, std::int64_t first_column) {
    const auto shape = set.shape(false);
    const auto samples = static_cast<std::uint64_t>(shape.dimensions().back());
    const auto components = samples == 0 ? 0 : shape.element_count() / samples;
    const auto width = PyArray_DIM(matrix, 1);
    const auto* cells = static_cast<const double*>(PyArray_DATA(matrix));
    std::vector<double> elements(samples * components);
    for (std::uint64_t component = 0; component < components; ++component) {
        const double* cell = cells + first_column + static_cast<std::int64_t>(component);
        double* element = elements.data() + component * samples;
        for (std::uint64_t sample = 0; sample < samples; ++sample, cell += width) element[sample] = *cell;
    }
    write_vector(select_all(set), elements);
}

} // namespace mox
