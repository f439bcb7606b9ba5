#pragma once

#include <string>
#include <vector>

#include <strata/data_group.hpp>

#include "acquisition/platforms/force_platforms.hpp"
#include "schema/force_platform_table.hpp"

namespace mox {

/// What is odd about the parameters that name the channels of platforms, and how they are read all
/// the same: a sentence each.
[[nodiscard]] std::vector<std::string> remarks_on(const strata::data_group& root,
                                                  const schema::force_platform_table& table,
                                                  const std::vector<platform_state>& platforms);

/// Logs those of `lines` that the attribute `name` of `group` does not hold yet, and keeps them
/// there: each is told once while what it tells of lasts.
void log_news(strata::data_group group, const char* name, const std::vector<std::string>& lines);

} // namespace mox
