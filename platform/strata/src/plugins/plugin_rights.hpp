#pragma once

#include <filesystem>
#include <string>

namespace strata::detail {

/// Throws load_failure when anybody may change the plugin at `path` or its folder: whoever loads it
/// would run their code. Returns what its group may change, in words, so that the log can say so;
/// empty when that is nothing. On Windows, where access lists decide, nothing is looked at.
[[nodiscard]] std::string require_trusted_place(const std::filesystem::path& path);

} // namespace strata::detail
