#pragma once

#include "store/python.hpp"

#include <vector>

#include <strata/data_shape.hpp>

namespace mox {

/// The items of a nested list in order, outer level first. Python ValueError when the nesting
/// differs from `shape`. Owns the items: Python code that changes the list meanwhile does no harm.
[[nodiscard]] std::vector<py_ref> flatten_list(PyObject* list, const strata::data_shape& shape);

} // namespace mox
