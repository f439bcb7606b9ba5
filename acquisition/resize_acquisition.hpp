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

/// Gives points and rotations `frames` frames. Analog channels keep their samples; while there are
/// none, those to come get the samples that belong to the frames.
void resize_points(const strata::data_store& acquisition, std::uint64_t frames);

/// Gives every analog channel `samples` samples.
void resize_analogs(const strata::data_store& acquisition, std::uint64_t samples);

} // namespace mox
