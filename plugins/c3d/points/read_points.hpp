// Points on their way between a file and the data store.
//
// | file          |                                                       |
// |---------------|-------------------------------------------------------|
// | point_kinds   | the kind and the unit of each point of a file         |
// | read_points   | a file's points become the set `Points`               |
// | point_columns | the points that are written, in the order of the file |
// | write_points  | what POINT says of them                               |
// | point_scale   | and POINT:SCALE, which residuals are multiples of     |

#pragma once

#include <vector>

#include <strata/data_group.hpp>
#include <strata/plugin/channel_buffer.hpp>

#include "plugins/c3d/frames/frame_layout.hpp"
#include "plugins/c3d/parameters/c3d_file.hpp"
#include "plugins/c3d/samples/decoder.hpp"

namespace c3d {

/// The points' samples in memory, a buffer for each point.
struct point_samples {
    /// `float32` elements, all x, all y, all z; for integer storage the integers of the file,
    /// scaled on reading.
    std::vector<strata::channel_buffer> coordinates;
    /// `float32`: the fourth words as the file has them, −1 for invalid samples.
    std::vector<strata::channel_buffer> residuals;

    [[nodiscard]] std::vector<point_target> targets() const;
};

/// Buffers for all frames, not initialised.
[[nodiscard]] point_samples allocate_points(const frame_layout& layout);

/// Makes every sample invalid.
void invalidate(const point_samples& samples);

/// Creates the set `Points` of `data`: values, labels, names, types, units, descriptions, residuals
/// and the time base.
void create_points(strata::data_group& data, const c3d_file& file, const frame_layout& layout,
                   point_samples samples);

} // namespace c3d
