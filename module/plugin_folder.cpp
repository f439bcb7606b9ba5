#include "module/plugin_folder.hpp"

#include <anvil/module_path.hpp>
#include <anvil/path_text.hpp>
#include <fmt/format.h>

#include "module/application.hpp"

namespace mox {

namespace {

bool is_separator(char c) { return c == '/' || c == '\\'; }

/// Length of "C:", or of "\\server".
std::size_t root_name_length(std::string_view path) {
    if (path.size() >= 2 && path[1] == ':')
        return 2;
    if (path.size() >= 3 && is_separator(path[0]) && path[0] == path[1] && !is_separator(path[2])) {
        std::size_t length = 2;
        while (length < path.size() && !is_separator(path[length]))
            ++length;
        return length;
    }
    return 0;
}

} // namespace

std::string parent_of(std::string_view path) {
    const auto root = root_name_length(path);
    const auto root_end = root < path.size() && is_separator(path[root]) ? root + 1 : root;
    auto end = path.size();
    while (end > root_end && !is_separator(path[end - 1]))
        --end;
    while (end > root_end && is_separator(path[end - 1]))
        --end;
    return std::string(path.substr(0, end));
}

std::filesystem::path module_folder() {
    return anvil::path_from_text(parent_of(anvil::text_of_path(anvil::module_path())));
}

std::filesystem::path plugins_path() { return module_folder() / "plugins"; }

void load_plugins(const std::filesystem::path& path) {
    std::error_code failure;
    if (!std::filesystem::is_directory(path, failure)) {
        log(anvil::log_level::error,
            fmt::format("The path set to discover and load plugins is not valid. Path : {}",
                        anvil::text_of_path(path)));
        return;
    }
    for (const auto& entry : std::filesystem::directory_iterator(path)) {
        strata::plugin_handle handle;
        the_application().plugins().load(&handle, anvil::text_of_path(entry.path()));
    }
}

void unload_plugins() {
    the_application().plugins().clear();
    log(anvil::log_level::info, "Plugins unloaded.");
    module_logger()->flush();
}

void reload_plugins() {
    unload_plugins();
    load_plugins(plugins_path());
    log(anvil::log_level::info, "Plugins reloaded.");
    module_logger()->flush();
}

std::string version() { return anvil::application_core::instance()->application_version(); }

} // namespace mox
