#pragma once

#include <cstdint>

#include <strata/data_group.hpp>

#include "plugins/c3d/parameters/parameter_tree.hpp"

namespace c3d {

/// The frames of a file, numbered from `first` on.
struct frame_range {
    std::uint64_t frames = 0;
    std::uint64_t first = 1;

    [[nodiscard]] std::uint64_t last() const noexcept { return first + frames - 1; }
    friend bool operator==(const frame_range&, const frame_range&) = default;
};

/// So many frames at `rate` Hz, of which the first has the time `start_time_s`; frame 1 has time 0.
/// Throws export_error when its number or the last one's is beyond 32 bits.
[[nodiscard]] frame_range frame_range_of(std::uint64_t frames, double rate, double start_time_s);

/// Words 4 and 5 of the header. A range that 16 bits cannot hold becomes one whose length differs
/// from the number of frames, so that a reader asks the parameters.
struct header_range {
    std::uint16_t first = 1;
    std::uint16_t last = 0;
};

[[nodiscard]] header_range header_range_of(const frame_range& range) noexcept;

/// Makes POINT:FRAMES, POINT:LONG_FRAMES and TRIAL tell the range. FRAMES stays a real where it is
/// one; otherwise 65,535 frames and more are told by LONG_FRAMES. The fields of TRIAL, which may
/// describe a longer recording, stay as they are as long as the range is the one that was read; an
/// acquisition that was not read gets them, and every one that cannot do without.
void put_frame_range(parameter_tree& tree, const frame_range& range,
                     const strata::data_group& format);

} // namespace c3d
