#pragma once

// Which samples of analog channels belong to which frames of points.

#include <cstdint>
#include <optional>

#include <strata/data_group.hpp>
#include <strata/data_store.hpp>

namespace mox {

/// Samples of an analog channel that belong to `frames` frames. Where the header has no ratio it is
/// 1, as in a file that is written.
[[nodiscard]] double analog_samples_of_frames(const strata::data_group& root, double frames);

/// Frames to which `samples` samples of an analog channel belong; none where they fill no whole
/// number of frames.
[[nodiscard]] std::optional<std::uint64_t> frames_of_analog_samples(const strata::data_group& root,
                                                                    std::uint64_t samples);

/// The frames that sampling::point_frame_number counts; none where there is nothing to count.
[[nodiscard]] std::optional<double> counted_frames(const strata::data_store& acquisition);

/// True when an analog channel of `samples` samples has what belongs to the counted frames; false
/// where none are counted.
[[nodiscard]] bool belong_to_frames(const strata::data_store& acquisition, std::uint64_t samples);

/// RuntimeError that names both counts, and the functions that mend them, when the analog channels
/// do not have the samples that belong to the frames of the points and rotations: such an
/// acquisition has no place in a file.
void require_sample_agreement(const strata::data_store& acquisition);

} // namespace mox
