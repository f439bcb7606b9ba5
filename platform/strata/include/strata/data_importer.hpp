#pragma once

#include <memory>
#include <string>

#include <anvil/io_device.hpp>
#include <anvil/status.hpp>

#include <strata/data_group.hpp>
#include <strata/export.hpp>

namespace strata {

class importer;

/// Reads an open device through one importer plugin.
class STRATA_EXPORT data_importer {
  public:
    /// Binds `device`, which must outlive this object, to the importer `plugin_id`; when the id is
    /// empty, to the first registered importer that accepts the device's content, unless the device
    /// cannot be read meanwhile.
    data_importer(anvil::io_device* device, const std::string& plugin_id);
    ~data_importer();

    /// Whether an importer was found.
    [[nodiscard]] bool is_accepted() const noexcept { return static_cast<bool>(importer_); }

    /// Fills `target` from the device. Fails when no importer was found or the device could not be
    /// read to find one, when the importer fails or throws; what was created in `target` until then
    /// stays.
    [[nodiscard]] anvil::status read(data_group target);

  private:
    anvil::io_device* device_;
    std::string plugin_id_;
    std::shared_ptr<importer> importer_;
    anvil::status unreadable_; ///< a failure when reading failed while an importer was looked for
};

} // namespace strata
