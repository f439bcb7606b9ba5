#pragma once

#include <span>

#include "plugins/c3d/analogs/analog_columns.hpp"
#include "plugins/c3d/rotations/write_rotations.hpp"
#include "plugins/c3d/samples/write_samples.hpp"

namespace c3d {

/// The reals of DEC files end at half the largest one of the others, and none is infinite. Throws
/// export_error, which names the channel, for a sample that none of them holds; NaN, and the
/// coordinates that make a point invalid, have their own marks.
void require_dec_range(const frame_sources& frames, std::span<const analog_column> channels,
                       const rotation_source& rotations);

} // namespace c3d
