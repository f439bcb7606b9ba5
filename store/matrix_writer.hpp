#pragma once

#include "store/python.hpp"

#include <cstdint>

#include <strata/data_set.hpp>

namespace mox {

/// "Given matrix should have type as float or double, …": RuntimeError.
[[noreturn]] void throw_wrong_matrix_type();

/// `value` as a float64 array that is C-ordered, aligned and of native byte order; `value` itself
/// where it is one. A list is turned into an array first. RuntimeError of throw_wrong_matrix_type
/// for any element type but float32 and float64, and for what is no array.
[[nodiscard]] py_ref as_matrix(PyObject* value);

/// Rows of a matrix.
struct row_range {
    std::uint64_t first;
    std::uint64_t count;
};

/// Writes `rows` of `matrix` (from as_matrix, a row a sample), from the column `first_column` on,
/// into the samples of the same numbers of a channel set, a column a component. The matrix has
/// these rows and columns, the set has these samples. A refused write is logged.
void write_matrix_rows(strata::data_set set, PyArrayObject* matrix, std::uint64_t first_column,
                       row_range rows);

/// The same for all samples of the set.
void write_matrix_columns(const strata::data_set& set, PyArrayObject* matrix,
                          std::uint64_t first_column);

} // namespace mox
