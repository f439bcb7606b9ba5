#pragma once

#include <span>

#include <strata/data_group.hpp>

#include "plugins/c3d/bytes/number_format.hpp"
#include "plugins/c3d/samples/write_samples.hpp"

namespace c3d {

/// POINT:SCALE, which is negative for real samples. Its magnitude is that of the file that was
/// read, since the residuals are multiples of it; without such a file, and where integer samples
/// would not hold the coordinates with it or would cut off digits of a file of real ones, the one
/// with which these fit integers of 16 bits.
[[nodiscard]] float point_scale_of(const strata::data_group& format,
                                   std::span<const point_source> points, std::uint64_t frames,
                                   sample_storage storage);

/// Makes the coordinates multiples of `scale`, the POINT:SCALE of integer samples, and the
/// residuals those of it rather than of the scale that was read.
void make_integers(frame_sources& frames, const strata::data_group& format, float scale);

} // namespace c3d
