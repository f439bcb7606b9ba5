#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <strata/data_group.hpp>

namespace schema {

/// The texts of a parameter of the group at `group_path`, with those of its numbered continuations
/// (a file holds 255 texts a parameter: `LABELS`, then `LABELS2`, `LABELS3` …). Nothing when the
/// group or the parameter is missing; no texts when it holds something else.
[[nodiscard]] std::optional<std::vector<std::string>>
read_parameter_list(const strata::data_group& root, std::string_view group_path,
                    const std::string& parameter);

} // namespace schema
