// Rates, numbers of frames and of samples.
//
// | file               |                                                     |
// |--------------------|-----------------------------------------------------|
// | sampling           | what they are                                       |
// | rate_parameter     | a rate among the parameters                         |
// | sample_agreement   | analog samples that belong to so many frames        |
// | set_sampling       | what they are to be                                 |
// | resize_acquisition | all that follows from a number of frames or samples |
// | resize_channels    | the channels of a group                             |
// | resize_rotations   | the rotations of the segments                       |
// | crop_acquisition   | the frames from one to another, and nothing else    |
// | cut_set            | samples of one set                                  |

#pragma once

// The time base of an acquisition: rates, frame counts, first frame, analog sampling. Counts are
// numbers like all others here. An attribute that is missing counts as 0; a missing group is a
// RuntimeError that names its path.

#include <strata/data_store.hpp>

namespace mox::sampling {

/// Point frames per second.
[[nodiscard]] double point_frequency(strata::data_store acquisition);

/// Number of point frames.
[[nodiscard]] double point_frame_number(strata::data_store acquisition);

/// Analog samples per second and channel.
[[nodiscard]] double analog_frequency(strata::data_store acquisition);

/// Number of samples of an analog channel.
[[nodiscard]] double analog_frame_number(strata::data_store acquisition);

/// Analog samples of a channel per point frame.
[[nodiscard]] double analog_samples_per_frame(strata::data_store acquisition);

/// Resolution of the analog-digital conversion in bits.
[[nodiscard]] double analog_resolution(strata::data_store acquisition);

/// Longest gap, in frames, that was interpolated when the points were made.
[[nodiscard]] double interpolation_gap(strata::data_store acquisition);

/// rate × start time of the markers, in single precision: 0 for an acquisition that starts with its
/// first frame.
[[nodiscard]] double first_frame(strata::data_store acquisition);

/// first_frame + number of frames − 1.
[[nodiscard]] double last_frame(strata::data_store acquisition);

} // namespace mox::sampling
