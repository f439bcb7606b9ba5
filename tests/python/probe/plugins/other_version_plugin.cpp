// Speaks a version of the plugin interface that does not exist yet.

#include <cstdint>

#include <strata/plugin/plugin.hpp>

extern "C" STRATA_PLUGIN_EXPORT std::uint32_t
strata_plugin_entry(strata::plugin_registry* /*registry*/, std::uint32_t /*host_version*/) {
    return strata::plugin_interface_version + 1;
}
