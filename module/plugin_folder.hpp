#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace mox {

/// The parent of `path`, by its text alone: behind the root name, the last run of characters that
/// are no separators ("\" or "/") goes with the separators before it, but never the root separator.
[[nodiscard]] std::string parent_of(std::string_view path);

/// The folder of the module file, and in it the folder of the plugins.
[[nodiscard]] std::filesystem::path module_folder();
[[nodiscard]] std::filesystem::path plugins_path();

/// Offers every entry of the folder `path` to the plugin manager. A missing folder, or a file in
/// its place, is a line in the log; a plugin that cannot be loaded does not stop the others. Throws
/// std::filesystem::filesystem_error when the folder cannot be read to its end.
void load_plugins(const std::filesystem::path& path);

void unload_plugins();

/// unload_plugins, then load_plugins(plugins_path()).
void reload_plugins();

/// Version of the application.
[[nodiscard]] std::string version();

} // namespace mox
