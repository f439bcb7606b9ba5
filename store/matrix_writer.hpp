#pragma once

#include "store/python.hpp"

#include <cstdint>

#include <strata/data_set.hpp>

namespace mox {

/// `value` as a float64 array that is C-ordered, aligned and of native byte order; `value` itself where it is one. A list is turned into an array first.
/// RuntimeError "Given matrix should have type as float or double, …" for any other element type.
[[nodiscard]] py_ref as_matrix(PyObject* value);

/// Writes the columns of `matrix` (from as_matrix, rows are samples) from `first_column` on into the components of a channel set.
/// The matrix has as many rows as the set's last dimension and enough columns. A refused write is logged.
void write_matrix_columns(const strata::data_set& set, PyArrayObject* matrix, std::int64_t first_column);

} // namespace mox
