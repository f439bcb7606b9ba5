#pragma once

#include <vector>

#include <strata/data_group.hpp>

#include "acquisition/platforms/force_platforms.hpp"

namespace mox {

/// Finds the group of each platform, by the unit that makes one where there is none that still
/// holds. `platforms` have no group yet. `columns`: the sets of the analog columns.
void detect_platforms(const strata::data_group& root, const schema::force_platform_table& table,
                      const std::vector<strata::data_set>& columns,
                      std::vector<platform_state>& platforms);

} // namespace mox
