#pragma once

#include <cstdint>

#include <strata/data_group.hpp>

namespace mox {

/// True where a segment has rotations.
[[nodiscard]] bool has_rotations(const strata::data_group& root);

/// What the rotations of `frames` frames take, in doubles; 0 without segments.
[[nodiscard]] double elements_of_rotations(const strata::data_group& root, std::uint64_t frames);

/// Gives the rotations of each segment as many samples as `frames` frames have. New samples are NaN
/// and without reliability. Requires memory for elements_of_rotations.
void resize_rotations(const strata::data_group& root, std::uint64_t frames);

} // namespace mox
