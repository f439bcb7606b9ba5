#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include <anvil/export.hpp>

namespace anvil {

/// The text of `path`. On POSIX systems the bytes of the file name, whatever they are; on Windows
/// UTF-8, in which half a surrogate pair becomes U+FFFD.
[[nodiscard]] ANVIL_EXPORT std::string text_of_path(const std::filesystem::path& path);

/// The path that `text` names; the reverse of text_of_path.
[[nodiscard]] ANVIL_EXPORT std::filesystem::path path_from_text(std::string_view text);

} // namespace anvil
