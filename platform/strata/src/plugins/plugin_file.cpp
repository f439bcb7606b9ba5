#include "platform/strata/src/plugins/plugin_file.hpp"

#include <cstdint>
#include <exception>
#include <system_error>
#include <utility>

#include <anvil/logging.hpp>
#include <anvil/path_text.hpp>
#include <strata/strata_logger.hpp>

#include "platform/strata/src/plugins/load_failure.hpp"
#include "platform/strata/src/plugins/plugin_catalog.hpp"
#include "platform/strata/src/plugins/plugin_rights.hpp"
#include "platform/strata/src/plugins/registration.hpp"

namespace strata::detail {

namespace {

using entry_point = std::uint32_t(plugin_registry*, std::uint32_t);

/// The file's one true path.
std::filesystem::path find_file(const std::string& path) {
    const auto given = anvil::path_from_text(path);
    std::error_code error;
    const auto state = std::filesystem::status(given, error);
    if (state.type() == std::filesystem::file_type::not_found)
        throw load_failure{"there is no such file"};
    if (state.type() == std::filesystem::file_type::directory)
        throw load_failure{"it is a directory"};
    if (state.type() != std::filesystem::file_type::regular)
        throw load_failure{"it is no regular file"};
    auto canonical = std::filesystem::canonical(given, error);
    if (error)
        throw load_failure{error.message()};
    return canonical;
}

/// Throws load_failure for a place that everybody may change; the log says when a group may.
void require_trusted(const std::string& path, const std::filesystem::path& place) {
    const auto changeable = require_trusted_place(place);
    if (changeable.empty())
        return;
    anvil::log_line(*get_strata_logger(), anvil::log_level::warning,
                    "The plugin '" + path + "' is loaded, but its group may write to " +
                        changeable);
}

/// A plugin that lets an exception out of its entry point is not asked what the exception is once
/// it is unloaded.
std::uint32_t call_entry_point(entry_point* entry, registration& registry) {
    try {
        return entry(&registry, plugin_interface_version);
    } catch (const std::exception& failure) {
        registry.report_failure(failure.what());
    } catch (...) {
        registry.report_failure("it threw something that is no exception");
    }
    return 0;
}

offers register_offers(const loaded_library& library) {
    auto* entry = reinterpret_cast<entry_point*>(library.find_symbol("strata_plugin_entry"));
    if (!entry)
        throw load_failure{"it is no plugin: it has no entry point"};

    registration registry;
    const auto answer = call_entry_point(entry, registry);
    if (answer != 0 && answer != plugin_interface_version) {
        throw load_failure{"it speaks version " + std::to_string(answer) +
                           " of the plugin interface, not version " +
                           std::to_string(plugin_interface_version)};
    }
    if (!registry.failure().empty())
        throw load_failure{registry.failure()};
    if (answer == 0)
        throw load_failure{"it failed to register"};
    return registry.take();
}

} // namespace

std::shared_ptr<loaded_plugin> load_plugin_file(const std::string& path) {
    const auto& catalog = plugin_catalog::instance();
    auto file = find_file(path);
    if (auto plugin = catalog.find(file))
        return plugin;
    // First, because the code of a library runs as soon as it is loaded, before anything is asked
    // of it. A link to the file counts like the file.
    const auto given = anvil::path_from_text(path);
    if (std::filesystem::is_symlink(given))
        require_trusted(path, given);
    require_trusted(path, file);
    loaded_library library{file};
    if (auto plugin = catalog.find(library))
        return plugin;
    auto offered = register_offers(library);
    return std::make_shared<loaded_plugin>(std::move(file), std::move(library), std::move(offered));
}

} // namespace strata::detail
