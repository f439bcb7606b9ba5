#pragma once

#include <cstddef>
#include <span>

#include "plugins/c3d/bytes/number_format.hpp"

namespace c3d {

/// Where the samples of one point go; nowhere for a point that is passed over.
struct point_target {
    float* coordinates = nullptr; ///< all x, then all y, then all z
    float* residuals = nullptr;   ///< the fourth words
};

/// Frames that lie one behind the other in memory.
struct point_block {
    const std::byte* points;  ///< the first point of the first frame
    std::size_t frame_bytes;  ///< from a frame to the next
    std::size_t frames;       ///< how many
    std::size_t first_frame;  ///< index of the first one in the targets
    std::size_t total_frames; ///< frames of a target, hence the distance of its components
};

/// What makes a sample of a point valid. Coordinates that are infinite or NaN make any sample
/// invalid.
enum class residual_rule {
    decides, ///< a fourth word from 0 to below 32,768
    /// Any fourth word, but for a negative one (or a 16-bit one that was taken without its sign)
    /// beside coordinates that are all 0; 0 goes to the residuals.
    ignored,
};

/// Samples of several channels, a row for each instant.
struct column_block {
    std::span<const std::byte* const> rows; ///< where the rows begin
    std::size_t first_row;                  ///< index of the first one in the targets
};

/// The decoding loops for one kind of data section.
struct decoder {
    /// Decodes all points of a block: an element for each sample, NaN and a residual of −1 where it
    /// is invalid. True when a sample is valid (under `ignored`: when one is and has a coordinate
    /// other than 0).
    bool (*points)(const point_block&, std::span<const point_target>, residual_rule);

    /// Decodes the columns of a block, each to its target.
    void (*columns)(const column_block&, std::span<float* const>);
};

/// The loops made for this processor. Real samples have no word sign.
[[nodiscard]] decoder decoder_for(number_format format, sample_storage storage,
                                  word_sign sign) noexcept;

} // namespace c3d
