#pragma once

#include <span>
#include <vector>

#include <strata/plugin/channel_buffer.hpp>

#include "plugins/c3d/bytes/number_format.hpp"
#include "plugins/c3d/parameters/parameter_table.hpp"
#include "schema/warnings.hpp"

namespace c3d {

/// ANALOG:SCALE and ANALOG:OFFSET of each channel, as they were understood.
struct stored_scaling {
    std::vector<float> scales;
    std::vector<float> offsets;
};

/// Reads scale and offset of every channel and gives them to its buffer, with which the raw samples
/// of the file become values: (raw − offset) × scale × general scale.
[[nodiscard]] stored_scaling apply_scaling(std::span<strata::channel_buffer> channels,
                                           const parameter_table& parameters,
                                           sample_storage storage, schema::warnings& notes);

} // namespace c3d
