#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <strata/data_group.hpp>

namespace mox {

// What an acquisition keeps of the file that it was read from: attributes of its root, which no
// function lists and no file gets.

/// Keeps one more thing that was odd.
void add_warning(strata::data_group root, std::string_view text);

/// All that was odd, the importer's texts first.
[[nodiscard]] std::vector<std::string> warnings_of(const strata::data_group& root);

/// Keeps the absolute path of the file, links in it as they are.
void keep_source_path(strata::data_group root, const std::filesystem::path& path);

/// That path as a text of anvil::text_of_path; nothing for what was not read from a file.
[[nodiscard]] std::optional<std::string> source_path_of(const strata::data_group& root);

} // namespace mox
