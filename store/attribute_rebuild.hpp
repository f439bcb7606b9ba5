#pragma once

// An attribute made again with another extent or another element type. Every check and conversion
// comes before the attribute is touched: after a failure it is as it was.

#include <cstdint>
#include <string>
#include <vector>

#include <strata/data_group.hpp>
#include <strata/data_set.hpp>
#include <strata/data_type.hpp>

namespace mox {

/// Gives the attribute `name` of `group`, of type int8, int16, float32 or string, as many elements
/// as the product of `dimensions` (1 for none) in one dimension: values are kept in order, further
/// ones are zero or empty. RuntimeError "Unsupported type" for any other element type.
void change_extent(strata::data_group group, const std::string& name,
                   const std::vector<std::int64_t>& dimensions);

/// Gives the attribute `name` of `group`, of type int8, int16, float32 or string, the element type
/// `target`, one of the same four, and converts its values: numbers as C++ does, saturating;
/// numbers to the shortest text that reads back; text to the number that it starts with, else 0.
/// RuntimeError "Unsupported type" for any other type on either side.
void change_element_type(strata::data_group group, const std::string& name,
                         strata::data_type target);

} // namespace mox
