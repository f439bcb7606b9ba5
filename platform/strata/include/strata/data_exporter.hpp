#pragma once

#include <memory>
#include <string>

#include <anvil/io_device.hpp>
#include <anvil/status.hpp>

#include <strata/data_group.hpp>
#include <strata/export.hpp>

namespace strata {

class exporter;

/// Writes to an open device through one exporter plugin.
class STRATA_EXPORT data_exporter {
  public:
    /// Binds `device`, which must outlive this object, to the exporter `plugin_id`.
    data_exporter(anvil::io_device* device, const std::string& plugin_id);
    ~data_exporter();

    /// Writes `source` to the device and commits it there. Fails when there is no such exporter,
    /// when it fails or throws, and when the device cannot complete what was written; nothing is
    /// committed then.
    [[nodiscard]] anvil::status write(data_group source);

  private:
    anvil::io_device* device_;
    std::string plugin_id_;
    std::shared_ptr<exporter> exporter_;
};

} // namespace strata
