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

#include <cstddef>
#include <string>
#include <vector>

#include <strata/data_group.hpp>
#include <strata/plugin/channel_buffer.hpp>

#include "plugins/c3d/frames/frame_layout.hpp"
#include "plugins/c3d/parameters/c3d_file.hpp"
#include "plugins/c3d/samples/decoder.hpp"
#include "schema/partial_reading.hpp"
#include "schema/point_kind_table.hpp"

namespace c3d {

/// What the parameters say of the points, an element a point.
struct point_texts {
    std::vector<std::string> labels;
    std::vector<std::string> names; ///< of the sets that the points become
    std::vector<const schema::point_kind*> kinds;
    std::vector<std::string> units;
    std::vector<std::string> descriptions;
};

[[nodiscard]] point_texts texts_of_points(const c3d_file& file, const frame_layout& layout);

/// The columns of the points that are wanted, ascending.
[[nodiscard]] std::vector<std::size_t> columns_of(const point_texts& texts,
                                                  const schema::wanted_kinds& wanted);

/// The samples in memory of the points that are read, a buffer for each.
struct point_samples {
    std::vector<std::size_t> columns; ///< where the points stand in the file, ascending
    /// `float32` elements, all x, all y, all z; for integer storage the integers of the file,
    /// scaled on reading.
    std::vector<strata::channel_buffer> coordinates;
    /// `float32`: the fourth words as the file has them, −1 for invalid samples.
    std::vector<strata::channel_buffer> residuals;

    /// One for each point of the file up to the last that is read; those between are passed over.
    [[nodiscard]] std::vector<point_target> targets() const;
};

/// Buffers for all frames of these points, not initialised.
[[nodiscard]] point_samples allocate_points(const frame_layout& layout,
                                            std::vector<std::size_t> columns);

/// Makes every sample invalid.
void invalidate(const point_samples& samples);

/// Creates the set `Points` of `data`: values, labels, names, types, units, descriptions, residuals
/// and the time base of the points that were read; their columns, where these are not all.
void create_points(strata::data_group& data, const frame_layout& layout, const point_texts& texts,
                   point_samples samples);

} // namespace c3d
