#pragma once

#include <strata/plugin/plugin.hpp>

namespace opensim {

/// Reads MOT and STO files: columns over time.
class column_importer final : public strata::importer {
  public:
    [[nodiscard]] bool accepts(anvil::io_device& device) const override;
    [[nodiscard]] anvil::status read(anvil::io_device& device,
                                     strata::data_group target) const override;
};

} // namespace opensim
