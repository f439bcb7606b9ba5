#pragma once

#include "store/python.hpp"

#include <vector>

#include <strata/data_shape.hpp>
#include <strata/data_type.hpp>

namespace mox {

/// NumPy type number for an element type of the store; RuntimeError for a type without element
/// kind.
[[nodiscard]] int numpy_type_of(strata::data_type type);

/// Element type of the store for an array's elements, by kind and width; `invalid` when it has
/// none. Byte order is not considered.
[[nodiscard]] strata::data_type store_type_of_array(PyArrayObject* array) noexcept;

/// Element type of the store for a Python value: array, text, float, int, or a list of values of
/// one type; `invalid` for anything else. Throws python_error for lists nested too deeply.
[[nodiscard]] strata::data_type store_type_of_value(PyObject* value);

/// Shape of a Python value: an array's dimensions, the extents of nested lists (of their first
/// elements), a scalar otherwise.
[[nodiscard]] strata::data_shape shape_of_value(PyObject* value);

/// A new array of NumPy type `type` with the dimensions of `shape`, not filled; throws
/// python_error.
[[nodiscard]] py_ref new_array(const strata::data_shape& shape, int type);

} // namespace mox
