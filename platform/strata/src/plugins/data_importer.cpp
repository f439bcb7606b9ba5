#include <strata/data_importer.hpp>

#include <exception>
#include <utility>

#include <anvil/logging.hpp>
#include <strata/plugin/plugin.hpp>
#include <strata/strata_logger.hpp>

#include "platform/strata/src/plugins/guarded_call.hpp"
#include "platform/strata/src/plugins/plugin_catalog.hpp"
#include "platform/strata/src/plugins/watched_device.hpp"

namespace strata {

namespace {

using detail::plugin_catalog;

/// An importer that throws here does not accept, and the log says so.
bool accepts(const importer& offer, const std::string& id, anvil::io_device& device) {
    try {
        return offer.accepts(device);
    } catch (const std::exception& failure) {
        const auto text =
            "The importer '" + id + "' failed to judge '" + device.name() + "' : " + failure.what();
        anvil::log_line(*get_strata_logger(), anvil::log_level::error, text);
        return false;
    }
}

anvil::status unreadable(const detail::watched_device& device) {
    return anvil::status::failure("'" + device.name() + "': byte " +
                                  std::to_string(device.failure_offset()) +
                                  ": reading failed: " + device.failure().message());
}

anvil::status no_importer(const std::string& id, const anvil::io_device& device) {
    if (!id.empty())
        return anvil::status::failure("The importer '" + id + "' is not loaded");
    auto text = "No importer accepts the file '" + device.name() + "'";
    if (plugin_catalog::instance().all_offers<importer>().empty())
        text += ": no importer plugin is loaded";
    return anvil::status::failure(std::move(text));
}

} // namespace

data_importer::data_importer(anvil::io_device* device, const std::string& plugin_id)
    : device_(device), plugin_id_(plugin_id) {
    if (!device_)
        return;
    if (!plugin_id_.empty()) {
        importer_ = plugin_catalog::instance().find_offer<importer>(plugin_id_);
        return;
    }
    detail::watched_device watched(*device_);
    for (auto& [id, offer] : plugin_catalog::instance().all_offers<importer>()) {
        const bool is_accepted = accepts(*offer, id, watched);
        if (watched.failure()) {
            unreadable_ = unreadable(watched);
            return;
        }
        if (!is_accepted)
            continue;
        importer_ = std::move(offer);
        plugin_id_ = std::move(id);
        return;
    }
}

data_importer::~data_importer() = default;

anvil::status data_importer::read(data_group target) {
    if (!device_)
        return anvil::status::failure("There is no device to read from");
    if (!unreadable_)
        return unreadable_;
    if (!importer_)
        return no_importer(plugin_id_, *device_);
    return detail::guarded_call("The importer '" + plugin_id_ + "'",
                                [&] { return importer_->read(*device_, target); });
}

} // namespace strata
