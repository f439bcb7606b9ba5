#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "platform/strata/src/plugins/loaded_plugin.hpp"

namespace strata::detail {

/// The plugin of the file at `path` (UTF-8): the one that the process has loaded already, or a new
/// one that has registered. Throws load_failure.
[[nodiscard]] std::shared_ptr<loaded_plugin> load_plugin_file(const std::string& path);

} // namespace strata::detail
