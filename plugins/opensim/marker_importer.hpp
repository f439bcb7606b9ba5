#pragma once

#include <strata/plugin/plugin.hpp>

namespace opensim {

/// Reads TRC files: markers.
class marker_importer final : public strata::importer {
  public:
    [[nodiscard]] bool accepts(anvil::io_device& device) const override;
    [[nodiscard]] anvil::status read(anvil::io_device& device,
                                     strata::data_group target) const override;
};

} // namespace opensim
