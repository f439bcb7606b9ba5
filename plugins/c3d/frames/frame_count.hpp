#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>

#include "plugins/c3d/parameters/c3d_file.hpp"

namespace c3d {

/// Everything in a file that tells how many frames it holds.
struct frame_claims {
    std::optional<std::uint64_t> long_frames; ///< POINT:LONG_FRAMES
    std::optional<std::uint64_t> real_frames; ///< POINT:FRAMES, where it is a real
    std::optional<std::uint64_t> word_frames; ///< POINT:FRAMES, where it is a 16-bit word
    std::optional<std::uint64_t> trial_first; ///< TRIAL:ACTUAL_START_FIELD
    std::optional<std::uint64_t> trial_last;  ///< TRIAL:ACTUAL_END_FIELD
    std::uint16_t header_first = 0;
    std::uint16_t header_last = 0;
};

[[nodiscard]] frame_claims frame_claims_of(const c3d_file& file);
/// As above, for words 4 and 5 of a header.
[[nodiscard]] frame_claims frame_claims_of(const parameter_table& parameters, std::uint16_t first,
                                           std::uint16_t last);

/// How far a count can be relied on.
enum class count_reliability {
    exact,          ///< held in a number that is wide enough
    may_be_wrapped, ///< held in 16 bits: a multiple of 65,536 may be missing
    saturated,      ///< has reached the end of 16 bits: there may be more
};

/// A number of frames and who says so.
struct frame_count {
    std::uint64_t frames = 0;
    const char* source = ""; ///< for messages
    count_reliability reliability = count_reliability::exact;
};

/// The count to go by: LONG_FRAMES, a real FRAMES, FRAMES, TRIAL, the header's range, in this
/// order. Nothing when no source gives one; the file's length decides then.
[[nodiscard]] std::optional<frame_count> claimed_frames(const frame_claims& claims);

/// Room for frames in a data section.
struct frame_room {
    std::uint64_t bytes = 0;       ///< from the first frame to the end of the section
    std::uint64_t frame_bytes = 1; ///< at least 1
    std::uint64_t zeros = 0;       ///< zero bytes at the end, which may be padding

    [[nodiscard]] std::uint64_t most() const noexcept { return bytes / frame_bytes; }
    /// The frames of which a byte is not zero, and those before them.
    [[nodiscard]] std::uint64_t most_with_content() const noexcept {
        const auto content = bytes - std::min(zeros, bytes);
        return std::min(most(), (content + frame_bytes - 1) / frame_bytes);
    }
    /// True when `frames` fill the section up to the padding of its last block.
    [[nodiscard]] bool is_filled_by(std::uint64_t frames) const noexcept {
        return frames <= most() && bytes - frames * frame_bytes < block_bytes;
    }
};

/// For a preferred count that does not fill the section: another source's count that does, or the
/// preferred one plus a multiple of 65,536 that 16 bits could not hold.
[[nodiscard]] std::optional<frame_count> count_that_fills(const frame_claims& claims,
                                                          const frame_room& room);

/// The number of frames to read from `room`, never more than fit. Differences are noted.
[[nodiscard]] std::uint64_t reconciled_frames(const frame_claims& claims, const frame_room& room,
                                              schema::warnings& notes);

/// Number of the first stored frame, 1 for a recording that was kept from its beginning. Requires:
/// `frames` as reconciled.
[[nodiscard]] std::uint64_t first_frame_number(const frame_claims& claims, std::uint64_t frames);

} // namespace c3d
