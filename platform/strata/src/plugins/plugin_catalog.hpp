#pragma once

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "platform/strata/src/plugins/loaded_plugin.hpp"

namespace strata::detail {

/// The plugins that the process's managers hold, in order of loading. Threads that read and write
/// files look offers up while another one loads and drops plugins: the lock guards nothing but the
/// copying of pointers, so nobody waits for long, and whoever holds it waits for nothing.
class plugin_catalog {
  public:
    /// The process's catalog. It is never destroyed, so that managers may be destroyed at any time.
    [[nodiscard]] static plugin_catalog& instance();

    /// The plugin loaded from a file, or that is this library; null when there is none.
    [[nodiscard]] std::shared_ptr<loaded_plugin>
    find(const std::filesystem::path& file) const noexcept;
    [[nodiscard]] std::shared_ptr<loaded_plugin> find(const loaded_library& library) const noexcept;

    /// A manager holds `plugin` from now on.
    void hold(const std::shared_ptr<loaded_plugin>& plugin);
    /// A manager no longer holds `plugin`, which leaves the catalog with its last holder.
    void drop(const std::shared_ptr<loaded_plugin>& plugin) noexcept;

    /// An offer under its id. It keeps its plugin loaded; null when there is none.
    template <typename Offer>
    [[nodiscard]] std::shared_ptr<Offer> find_offer(std::string_view id) const noexcept {
        const std::lock_guard lock{mutex_};
        for (const auto& entry : entries_) {
            if (auto* offer = entry.plugin->offered().template of<Offer>().find(id))
                return {entry.plugin, offer};
        }
        return nullptr;
    }

    template <typename Offer> struct named_offer {
        std::string id;
        std::shared_ptr<Offer> offer;
    };

    /// All offers of a kind, in order of registration.
    template <typename Offer> [[nodiscard]] std::vector<named_offer<Offer>> all_offers() const {
        std::vector<named_offer<Offer>> all;
        const std::lock_guard lock{mutex_};
        for (const auto& entry : entries_) {
            for (const auto& row : entry.plugin->offered().template of<Offer>().rows()) {
                all.push_back({row.id, {entry.plugin, row.offer.get()}});
            }
        }
        return all;
    }

  private:
    plugin_catalog();

    struct held_plugin {
        std::shared_ptr<loaded_plugin> plugin;
        std::size_t holders = 0; // managers
    };
    mutable std::mutex mutex_; // free in a forked child
    std::vector<held_plugin> entries_;
};

} // namespace strata::detail
