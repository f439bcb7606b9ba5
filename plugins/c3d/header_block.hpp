#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <strata/data_group.hpp>

#include "plugins/c3d/frames/frame_range.hpp"
#include "plugins/c3d/parameters/header.hpp"

namespace c3d {

/// What the header block repeats of the parameters, and what only it holds.
struct header_content {
    std::uint64_t points = 0;
    std::uint64_t channels = 0;
    std::uint64_t samples_per_frame = 1;
    frame_range range;
    std::uint64_t interpolation_gap = 0; ///< at most 65,535
    float scale = -1.0F;                 ///< negative for real samples
    std::uint64_t data_start = 0;        ///< a block
    float rate = 0.0F;
    std::vector<header_event> events; ///< at most 18
};

/// The block of a file with such numbers whose parameters begin in block 2. Bytes that the format
/// reserves are those of the file that was read; `format` holds them.
[[nodiscard]] header_block header_block_of(const header_content& content,
                                           const strata::data_group& format, number_format numbers);

/// The longest gap that the acquisition says. Throws export_error when the header cannot hold it.
[[nodiscard]] std::uint64_t interpolation_gap_of(const strata::data_group& format);

} // namespace c3d
