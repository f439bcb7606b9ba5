#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace anvil {

/// The text of `path`. On POSIX systems the bytes of the file name, whatever they are; on Windows
/// UTF-8, in which half a surrogate pair becomes U+FFFD.
[[nodiscard]] std::string path_to_utf8(const std::filesystem::path& path);

/// The path that `text` names; the reverse of path_to_utf8.
[[nodiscard]] std::filesystem::path path_from_utf8(std::string_view text);

} // namespace anvil
