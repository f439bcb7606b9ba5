#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <anvil/json.hpp>

#include <strata/data_group.hpp>

namespace schema {

/// The text member `name` of a unit's parameters. Throws std::invalid_argument that names the unit
/// and the member.
[[nodiscard]] std::string text_parameter(const anvil::json& parameters, std::string_view unit,
                                         const char* name);

/// The whole number `name`. Throws alike.
[[nodiscard]] std::int64_t integer_parameter(const anvil::json& parameters, std::string_view unit,
                                             const char* name);

/// The group at `path`, created when it does not exist.
[[nodiscard]] strata::data_group reach_group(strata::data_group& root, std::string_view path);

} // namespace schema
