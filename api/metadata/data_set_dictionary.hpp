#pragma once

#include "store/python.hpp"

#include <strata/data_set.hpp>

namespace mox::metadata {

/// A set as a dictionary: each attribute under its name, then its content under "Values"; arrays
/// are transposed.
[[nodiscard]] py_ref data_set_dictionary(const strata::data_set set);

} // namespace mox::metadata
