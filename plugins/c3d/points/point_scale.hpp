#pragma once

#include <span>

#include <strata/data_group.hpp>

#include "plugins/c3d/samples/write_samples.hpp"

namespace c3d {

/// POINT:SCALE for real samples, which is negative. Its magnitude is that of the file that was
/// read, since the residuals are multiples of it; else the one with which the coordinates fit
/// integers of 16 bits.
[[nodiscard]] float point_scale_of(const strata::data_group& format,
                                   std::span<const point_source> points, std::uint64_t frames);

} // namespace c3d
