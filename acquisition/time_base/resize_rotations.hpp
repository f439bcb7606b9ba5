#pragma once

#include <cstdint>
#include <vector>

#include <strata/data_group.hpp>
#include <strata/data_set.hpp>

namespace mox {

/// True where a segment has rotations.
[[nodiscard]] bool has_rotations(const strata::data_group& root);

/// Samples of rotations in each frame; 1 where no file told another number.
[[nodiscard]] std::uint64_t rotations_in_frame(const strata::data_group& root);

/// All sets with the rotations of each sample in their last dimension: those of the segments and,
/// behind them, the raw set, which is what is written to a file.
[[nodiscard]] std::vector<strata::data_set> all_rotations(const strata::data_group& root);

/// What the rotations of `frames` frames take, in doubles; 0 without segments.
[[nodiscard]] double elements_of_rotations(const strata::data_group& root, std::uint64_t frames);

/// Gives the rotations of each segment as many samples as `frames` frames have. New samples are NaN
/// and without reliability. Requires memory for elements_of_rotations.
void resize_rotations(const strata::data_group& root, std::uint64_t frames);

} // namespace mox
