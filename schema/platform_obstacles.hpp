#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include <strata/data_set.hpp>

#include "schema/force_platform_table.hpp"

namespace schema {

/// What the channels of a platform are called, in the order of its type; none for a type that
/// nobody has described.
[[nodiscard]] std::span<const char* const> channel_names(std::int64_t type);

/// Why the wrench of a platform cannot be known from what describes it, for the log; empty when it
/// can. `columns`: the sets of the analog columns, in their order, from pair_analogs.
[[nodiscard]] std::string obstacle_of(const force_platform& platform,
                                      const std::vector<strata::data_set>& columns);

} // namespace schema
