#pragma once

#include "store/python.hpp"

#include <vector>

#include <strata/data_set.hpp>

namespace mox {

/// The samples of all channels in one C-ordered float64 matrix: a row a sample, and for each
/// channel, in ascending `RelativeSetIndex`, a column a component. Sets without that attribute
/// leave their columns at the end, NaN. Without sets: an array without dimensions.
[[nodiscard]] py_ref values_matrix(const std::vector<strata::data_set>& sets);

} // namespace mox
