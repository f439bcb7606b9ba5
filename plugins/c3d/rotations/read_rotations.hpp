// Rotations on their way between a file and the data store.
//
// | file             |                                                         |
// |------------------|---------------------------------------------------------|
// | read_rotations   | the rotation section becomes the set `Rotations`        |
// | detect_rotations | the unit that makes a group of each segment             |
// | write_rotations  | the rows of the section, and what ROTATION says of them |

#pragma once

#include <array>
#include <string>
#include <utility>

#include <strata/data_group.hpp>
#include <strata/plugin/channel_buffer.hpp>

#include "plugins/c3d/frames/rotation_layout.hpp"
#include "schema/names.hpp"
#include "schema/partial_reading.hpp"

namespace c3d {

/// The texts of rotations: the attribute of the set, and the parameter of ROTATION.
inline constexpr std::array<std::pair<const char*, const char*>, 2> rotation_texts{{
    {schema::attribute::labels, schema::parameter::labels},
    {schema::attribute::descriptions, schema::parameter::descriptions},
}};

/// The transforms of all segments in memory: `float32`, 17 components of all rows.
[[nodiscard]] std::vector<strata::channel_buffer>
read_rotations(const file_reader& reader, number_format format, const rotation_layout& layout);

/// The segments that were not read.
void add_unread_rotations(schema::unread_channels& unread, const c3d_file& file,
                          const rotation_layout& layout);

/// Creates the set `Rotations` of `data`, shape {17, segments, rows}: component 4 × column + row of
/// the matrix, then the reliability. Attributes: `Labels`, `Descriptions`, `Ratio` (int32: rows in
/// a frame), `NumSamples`, `SampleRate`, `StartTime`.
void create_rotations(strata::data_group& data, const c3d_file& file, const rotation_layout& layout,
                      double start_time_s, std::vector<strata::channel_buffer> segments);

} // namespace c3d
