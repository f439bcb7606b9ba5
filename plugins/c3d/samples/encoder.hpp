#pragma once

#include <array>
#include <cstddef>
#include <span>

#include "plugins/c3d/bytes/number_format.hpp"

namespace c3d {

/// The samples of one point in consecutive frames. Where a coordinate is infinite or NaN the sample
/// is invalid; where the fourth word is none of a valid sample (0 to below 32,768), it becomes 0.
/// Numbers that are going to be integers are divided by their scale already.
struct point_run {
    std::array<const float*, 3> coordinates;
    const float* words; ///< the fourth words
    std::size_t frames;
};

/// The samples of up to four channels at consecutive instants.
struct column_run {
    std::array<const float*, 4> columns;
    std::size_t count; ///< of columns, 1 to 4; those behind may be anything
};

/// The loops that turn channels into the records of one form of file.
struct encoder {
    /// Writes a record of four numbers for each frame, from `to` on, `frame_bytes` apart: x, y, z
    /// and the fourth word; for an invalid sample 0, 0, 0 and −1.
    void (*points)(const point_run&, std::byte* to, std::size_t frame_bytes);

    /// Writes a number of each column to each row, `offset` bytes behind its beginning.
    void (*columns)(const column_run&, std::span<std::byte* const> rows, std::size_t offset);
};

/// The loops made for this processor. Integers are the nearest ones, which have to be words with or
/// without a sign.
[[nodiscard]] encoder encoder_for(number_format format, sample_storage storage) noexcept;

} // namespace c3d
