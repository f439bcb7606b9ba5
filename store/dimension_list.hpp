#pragma once

#include "store/python.hpp"

#include <cstdint>
#include <vector>

namespace mox {

/// The extents that a list, tuple or array of integers gives. Python TypeError for anything else,
/// ValueError for a negative extent and for a product beyond 2^24 elements. May run Python code, so
/// it comes before the acquisition is looked at.
[[nodiscard]] std::vector<std::int64_t> dimension_list(PyObject* value);

} // namespace mox
