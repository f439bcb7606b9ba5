#pragma once

#include <string>

#include <strata/data_type.hpp>

namespace mox::metadata {

/// Format name that entries of an element type are shown with: "Byte", "Integer", "Real", "Char" …
/// Throws std::out_of_range "invalid map<K, T> key" for a type without one.
[[nodiscard]] const char* format_of_type(strata::data_type type);

/// True for the four names that an entry can be given.
[[nodiscard]] bool is_format_name(const std::string& name) noexcept;

} // namespace mox::metadata
