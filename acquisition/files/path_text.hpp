#pragma once

#include <filesystem>
#include <string>

namespace mox {

/// The path that `text` denotes: UTF-8, or bytes of the file system's encoding.
[[nodiscard]] std::filesystem::path path_from_text(const std::string& text);

/// The text of a path; the reverse of path_from_text.
[[nodiscard]] std::string text_of_path(const std::filesystem::path& path);

} // namespace mox
