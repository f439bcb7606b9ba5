#pragma once

// Which samples of analog channels belong to which frames of points.

#include <cstdint>

#include <strata/data_group.hpp>
#include <strata/data_store.hpp>

namespace mox {

/// Samples of an analog channel that belong to `frames` frames. Where the header has no ratio it is
/// 1, as in a file that is written.
[[nodiscard]] double analog_samples_of_frames(const strata::data_group& root, double frames);

/// True when an analog channel of `samples` samples has what belongs to the frames, as
/// sampling::point_frame_number counts them; false where no frames are counted.
[[nodiscard]] bool belong_to_frames(const strata::data_store& acquisition, std::uint64_t samples);

/// RuntimeError that names both counts, and the functions that mend them, when the analog channels
/// do not have the samples that belong to the frames of the points: such an acquisition has no
/// place in a file.
void require_sample_agreement(const strata::data_store& acquisition);

} // namespace mox
