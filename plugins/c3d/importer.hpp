#pragma once

#include <anvil/io_device.hpp>
#include <anvil/status.hpp>

#include <strata/data_group.hpp>
#include <strata/plugin/plugin.hpp>

namespace c3d {

/// Reads C3D files: the group `Format` with `Metadata`, `Header` and, below `Data`, the sets
/// `Points`, `Analogs` and, where a file has rotations, `Rotations`. What is odd about a file goes
/// to the store's log.
class importer final : public strata::importer {
  public:
    [[nodiscard]] bool accepts(anvil::io_device& device) const override;

    /// Nothing is created before the file has been read as a whole.
    [[nodiscard]] anvil::status read(anvil::io_device& device,
                                     strata::data_group target) const override;
};

} // namespace c3d
