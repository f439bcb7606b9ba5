#include "platform/strata/src/plugins/plugin_catalog.hpp"

#include <utility>

#include <anvil/on_fork.hpp>

namespace strata::detail {

plugin_catalog::plugin_catalog() {
    anvil::on_fork([] { instance().mutex_.lock(); }, [] { instance().mutex_.unlock(); });
}

plugin_catalog& plugin_catalog::instance() {
    static auto& catalog = *new plugin_catalog;
    return catalog;
}

std::shared_ptr<loaded_plugin>
plugin_catalog::find(const std::filesystem::path& file) const noexcept {
    const std::lock_guard lock{mutex_};
    for (const auto& entry : entries_) {
        if (entry.plugin->file() == file)
            return entry.plugin;
    }
    return nullptr;
}

std::shared_ptr<loaded_plugin> plugin_catalog::find(const loaded_library& library) const noexcept {
    const std::lock_guard lock{mutex_};
    for (const auto& entry : entries_) {
        if (entry.plugin->library().is_same(library))
            return entry.plugin;
    }
    return nullptr;
}

void plugin_catalog::hold(const std::shared_ptr<loaded_plugin>& plugin) {
    const std::lock_guard lock{mutex_};
    const auto found = std::ranges::find(entries_, plugin, &held_plugin::plugin);
    if (found == entries_.end()) {
        entries_.push_back({plugin, 1});
    } else {
        ++found->holders;
    }
}

void plugin_catalog::drop(const std::shared_ptr<loaded_plugin>& plugin) noexcept {
    std::shared_ptr<loaded_plugin> last; // unloaded, if it is, once the lock is left
    const std::lock_guard lock{mutex_};
    const auto found = std::ranges::find(entries_, plugin, &held_plugin::plugin);
    if (found == entries_.end() || --found->holders != 0)
        return;
    last = std::move(found->plugin);
    entries_.erase(found);
}

} // namespace strata::detail
