#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace mox {

/// The existing file that `name` (UTF-8, absolute or relative to the current directory) denotes,
/// without links and long-path prefixes. RuntimeError that quotes `name` when there is no such file
/// or its canonical path cannot be had.
[[nodiscard]] std::filesystem::path canonical_path(const std::string& name);

/// `path` without the prefix of Windows long paths: "\\?\UNC\server" becomes "\\server", "\\?\C:\"
/// loses the prefix; paths below "\\?\GLOBALROOT", and any other, stay as they are.
[[nodiscard]] std::string without_long_path_prefix(std::string_view path);

} // namespace mox
