#pragma once

// Other numbers of samples for all channels of an acquisition, and for the rotations that go with
// them. Nothing changes when memory is short: std::bad_alloc.

#include <cstdint>

#include <strata/data_store.hpp>

namespace mox {

/// From here on no attribute holds a count: 2^63.
inline constexpr double largest_count = 9223372036854775808.0;

/// Throws std::bad_alloc unless the memory for `frames` frames, with `ratio` analog samples each,
/// can be had.
void require_memory_for_frames(const strata::data_store& acquisition, std::uint64_t frames,
                               int ratio);

/// Gives every point `frames` frames, every analog channel `frames` × ratio samples, and segments
/// the rotations of so many frames.
void resize_to_frames(const strata::data_store& acquisition, std::uint64_t frames);

/// Gives points and rotations `frames` frames. Analog channels keep their samples; then
/// resize_channels_to_come.
void resize_points(const strata::data_store& acquisition, std::uint64_t frames);

/// Gives every analog channel `samples` samples; then resize_channels_to_come.
void resize_analogs(const strata::data_store& acquisition, std::uint64_t samples);

/// Groups without channels follow what is there, so that channels that are appended fit and a file
/// has the counts that the getters give. To be called when channels were removed or a count was
/// changed.
/// - Without points and rotations, points to come get the frames of the analog channels; without
///   those too, the frames that are counted.
/// - Without analog channels, those to come get the samples that belong to the counted frames.
/// Where that needs a group that is missing, or is more than an attribute holds, a count stays.
void resize_channels_to_come(const strata::data_store& acquisition);

} // namespace mox
