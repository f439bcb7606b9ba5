#include "platform/strata/src/plugins/plugin_catalog.hpp"

namespace strata::detail {

plugin_catalog& plugin_catalog::instance() {
    static auto& catalog = *new plugin_catalog;
    return catalog;
}

std::shared_ptr<loaded_plugin>
plugin_catalog::find(const std::filesystem::path& file) const noexcept {
    for (const auto& entry : entries_) {
        if (entry.plugin->file() == file)
            return entry.plugin;
    }
    return nullptr;
}

std::shared_ptr<loaded_plugin> plugin_catalog::find(const loaded_library& library) const noexcept {
    for (const auto& entry : entries_) {
        if (entry.plugin->library().is_same(library))
            return entry.plugin;
    }
    return nullptr;
}

void plugin_catalog::hold(const std::shared_ptr<loaded_plugin>& plugin) {
    const auto found = std::ranges::find(entries_, plugin, &held_plugin::plugin);
    if (found == entries_.end()) {
        entries_.push_back({plugin, 1});
    } else {
        ++found->holders;
    }
}

void plugin_catalog::drop(const std::shared_ptr<loaded_plugin>& plugin) noexcept {
    const auto found = std::ranges::find(entries_, plugin, &held_plugin::plugin);
    if (found != entries_.end() && --found->holders == 0)
        entries_.erase(found);
}

} // namespace strata::detail
