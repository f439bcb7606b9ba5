#pragma once

#include <anvil/io_device.hpp>
#include <anvil/status.hpp>

#include <strata/data_group.hpp>
#include <strata/plugin/plugin.hpp>

namespace c3d {

/// Writes an acquisition as a C3D file: the points of the five groups below `Format/Data`, the
/// analog channels of `AnalogsExport`, the rotations, the events of `Format/Events`, and the
/// parameters of `Format/Metadata`, of which those that describe the samples are made to fit them.
/// Numbers are Intel's and samples reals unless `Format/Header` asks for another form, by
/// `WantedProcessor` and `WantedStorage`.
///
/// Nothing is changed in the acquisition. What is written otherwise than the acquisition says goes
/// to the store's log. A failure names the parameter and the limit of the format, in which case
/// nothing has been written, or the byte that the device did not take.
class exporter final : public strata::exporter {
  public:
    [[nodiscard]] anvil::status write(anvil::io_device& device,
                                      strata::data_group source) const override;
};

} // namespace c3d
