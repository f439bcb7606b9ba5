// How many frames a file has, and where they lie.
//
// | file              |                                                                |
// |-------------------|----------------------------------------------------------------|
// | layout_candidates | what header and parameters say, the most trusted first         |
// | frame_count       | who says how many frames there are, and whom to believe        |
// | frame_layout      | what all of them and the length of the file agree on           |
// | rotation_layout   | the same of the rotation section                               |
// | frame_range       | the frames of a file that is written, in header and parameters |

#pragma once

#include <cstdint>

#include "plugins/c3d/bytes/number_format.hpp"
#include "plugins/c3d/parameters/c3d_file.hpp"

namespace c3d {

/// How far a rate may be off, as a part of it, and still be a multiple of another: both were
/// rounded when they were written, such as 600 Hz beside 59.94 Hz.
inline constexpr double rate_tolerance = 0.01;

/// How the data section is laid out, once header, parameters and the file's length have been heard.
struct frame_layout {
    sample_storage storage = sample_storage::real;
    std::uint64_t points = 0;   ///< in a frame
    std::uint64_t channels = 0; ///< analog channels
    /// Of each analog channel; at least 1, also without channels.
    std::uint64_t samples_per_frame = 1;
    std::uint64_t frames = 0;      ///< that are in the file
    std::uint64_t data_offset = 0; ///< of the first frame in the file
    std::uint64_t first_frame = 1; ///< number of the first stored frame
    float scale = 1.0F;            ///< above 0: unit of the points' integers
    double point_rate = 0.0;       ///< Hz; 0 when the file does not tell
    double analog_rate = 0.0;      ///< Hz, of one channel

    [[nodiscard]] std::uint64_t point_bytes() const noexcept {
        return points * (storage == sample_storage::real ? 16u : 8u);
    }
    [[nodiscard]] std::uint64_t analog_row_bytes() const noexcept {
        return channels * (storage == sample_storage::real ? 4u : 2u);
    }
    [[nodiscard]] std::uint64_t frame_bytes() const noexcept {
        return point_bytes() + analog_row_bytes() * samples_per_frame;
    }
    /// Time of the first frame: that of frame 1 is 0.
    [[nodiscard]] double start_time_s() const noexcept {
        return point_rate > 0.0 ? static_cast<double>(first_frame - 1) / point_rate : 0.0;
    }
};

/// Parameters are believed before the header, and both only as far as the file's length allows:
/// where they differ, that layout is taken whose frames fill the file. What was decided is noted.
///
/// Throws import_error when frames are announced and not one of them is in the file.
[[nodiscard]] frame_layout decide_layout(const c3d_file& file, schema::warnings& notes);

} // namespace c3d
