#pragma once

// What a plugin offers, and how it says so. A plugin is a shared library that contains
// STRATA_PLUGIN once:
//
//     STRATA_PLUGIN(registry) {
//         registry.add_importer("org.example.csv", std::make_unique<csv_importer>());
//     }

#include <cstdint>
#include <exception>
#include <memory>
#include <string>

#include <anvil/io_device.hpp>
#include <anvil/json.hpp>
#include <anvil/status.hpp>

#include <strata/data_group.hpp>
#include <strata/export.hpp>

namespace strata {

/// Version of everything in the public headers that a plugin is compiled against. A plugin of
/// another version is refused.
inline constexpr std::uint32_t plugin_interface_version = 2;

/// Reads one file format.
class STRATA_EXPORT importer {
  public:
    virtual ~importer();

    /// True when the device's content looks like this format. Judges by content only.
    [[nodiscard]] virtual bool accepts(anvil::io_device& device) const = 0;

    /// Fills `target`. A failure names the place (byte offset, group, parameter), what was expected
    /// and what was found.
    [[nodiscard]] virtual anvil::status read(anvil::io_device& device, data_group target) const = 0;
};

/// Writes one file format.
class STRATA_EXPORT exporter {
  public:
    virtual ~exporter();

    [[nodiscard]] virtual anvil::status write(anvil::io_device& device,
                                              data_group source) const = 0;
};

/// A computation on a tree, described by a JSON object.
class STRATA_EXPORT callable_unit {
  public:
    virtual ~callable_unit();

    [[nodiscard]] virtual anvil::status evaluate(data_group& target,
                                                 const anvil::json& parameters) const = 0;
};

/// Takes a plugin's offers while it is loaded. An id that is taken makes the whole load fail.
class STRATA_EXPORT plugin_registry {
  public:
    virtual ~plugin_registry();

    virtual void add_importer(std::string id, std::unique_ptr<importer> offer) = 0;
    virtual void add_exporter(std::string id, std::unique_ptr<exporter> offer) = 0;
    virtual void add_unit(std::string id, std::unique_ptr<callable_unit> offer) = 0;

    /// Says why registering failed, for the log. Called by STRATA_PLUGIN with what the plugin
    /// threw.
    virtual void report_failure(const char* reason) noexcept = 0;
};

} // namespace strata

#if defined(_WIN32)
#define STRATA_PLUGIN_EXPORT __declspec(dllexport)
#else
#define STRATA_PLUGIN_EXPORT __attribute__((visibility("default")))
#endif

/// Defines the plugin's entry point. It answers with the version that the plugin was compiled
/// against; the body runs, and registers, only when that is the host's. Answers 0 when registering
/// failed: nothing of the plugin is kept then.
// NOLINTBEGIN(bugprone-macro-parentheses): a name that is declared takes no parentheses
#define STRATA_PLUGIN(registry)                                                                    \
    static void strata_plugin_register(strata::plugin_registry& registry);                         \
    extern "C" STRATA_PLUGIN_EXPORT std::uint32_t strata_plugin_entry(                             \
        strata::plugin_registry* host_registry, std::uint32_t host_interface_version) noexcept {   \
        if (host_interface_version != strata::plugin_interface_version)                            \
            return strata::plugin_interface_version;                                               \
        try {                                                                                      \
            strata_plugin_register(*host_registry);                                                \
            return strata::plugin_interface_version;                                               \
        } catch (const std::exception& failure) {                                                  \
            host_registry->report_failure(failure.what());                                         \
        } catch (...) {                                                                            \
            host_registry->report_failure("it threw something that is no exception");              \
        }                                                                                          \
        return 0;                                                                                  \
    }                                                                                              \
    static void strata_plugin_register(strata::plugin_registry& registry)
// NOLINTEND(bugprone-macro-parentheses)
