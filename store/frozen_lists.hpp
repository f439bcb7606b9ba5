#pragma once

#include "store/python.hpp"

namespace mox {

/// Nested lists, tuples and other sequences as nested tuples that nobody else holds; anything else
/// as it is. NumPy reads beyond the end of a list that shrinks meanwhile, which the Python code of
/// a value in it can bring about. ValueError for a list that holds itself.
[[nodiscard]] py_ref frozen_lists(PyObject* value);

} // namespace mox
