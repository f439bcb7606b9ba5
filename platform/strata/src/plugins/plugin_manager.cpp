#include <strata/plugin_manager.hpp>

#include <algorithm>
#include <exception>
#include <vector>

#include <anvil/logging.hpp>
#include <strata/strata_logger.hpp>

#include "platform/strata/src/plugins/loaded_plugin.hpp"
#include "platform/strata/src/plugins/plugin_catalog.hpp"
#include "platform/strata/src/plugins/plugin_file.hpp"

namespace strata {

namespace detail {

/// The plugins that one manager holds, each once.
class registrations {
  public:
    registrations() = default;
    registrations(const registrations&) = delete;
    registrations& operator=(const registrations&) = delete;
    ~registrations() {
        // Last loaded, first dropped.
        for (; !held_.empty(); held_.pop_back())
            plugin_catalog::instance().drop(held_.back());
    }

    void hold(const std::shared_ptr<loaded_plugin>& plugin) {
        if (std::ranges::find(held_, plugin) != held_.end())
            return;
        held_.reserve(held_.size() + 1);
        plugin_catalog::instance().hold(plugin);
        held_.push_back(plugin);
    }

  private:
    std::vector<std::shared_ptr<loaded_plugin>> held_;
};

} // namespace detail

plugin_handle::plugin_handle() = default;
plugin_handle::~plugin_handle() = default;
plugin_handle::plugin_handle(const plugin_handle&) = default;
plugin_handle& plugin_handle::operator=(const plugin_handle&) = default;

plugin_manager::plugin_manager() : registrations_(std::make_unique<detail::registrations>()) {}
plugin_manager::~plugin_manager() = default;

bool plugin_manager::load(plugin_handle* handle, const std::string& path) {
    try {
        registrations_->hold(detail::load_plugin_file(path));
        if (handle)
            handle->path_ = path;
        return true;
    } catch (const std::exception& failure) {
        const auto text = "The plugin '" + path + "' was not loaded: " + failure.what();
        anvil::log_line(*get_strata_logger(), anvil::log_level::error, text);
        return false;
    }
}

void plugin_manager::clear() { registrations_ = std::make_unique<detail::registrations>(); }

} // namespace strata
