#include <strata/data_exporter.hpp>

#include <strata/plugin/plugin.hpp>

#include "platform/strata/src/plugins/guarded_call.hpp"
#include "platform/strata/src/plugins/plugin_catalog.hpp"

namespace strata {

data_exporter::data_exporter(anvil::io_device* device, const std::string& plugin_id)
    : device_(device), plugin_id_(plugin_id),
      exporter_(detail::plugin_catalog::instance().find_offer<exporter>(plugin_id)) {}

data_exporter::~data_exporter() = default;

anvil::status data_exporter::write(data_group source) {
    if (!device_)
        return anvil::status::failure("There is no device to write to");
    if (!exporter_)
        return anvil::status::failure("The exporter '" + plugin_id_ + "' is not loaded");
    auto status = detail::guarded_call("The exporter '" + plugin_id_ + "'",
                                       [&] { return exporter_->write(*device_, source); });
    if (!status)
        return status;
    if (const auto failure = device_->commit())
        return anvil::status::failure("The file could not be completed: " + failure.message());
    return status;
}

} // namespace strata
