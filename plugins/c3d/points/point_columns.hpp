#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <strata/data_group.hpp>
#include <strata/data_set.hpp>

#include "schema/point_kind_table.hpp"
#include "schema/warnings.hpp"

namespace c3d {

/// A point that is going to be written.
struct point_column {
    strata::data_set set;
    const schema::point_kind* kind = &schema::marker_kind;
    std::size_t listed = 0; ///< place among all points as the store lists them
    std::string label;      ///< as the file gets it
    std::string unit;       ///< empty where it is "Unknown"
    std::string description;
};

/// The points of the five point groups of `data`, in the order of the file: by ascending
/// `RelativeSetIndex`, which is the column of the file that was read and goes on where points were
/// appended.
///
/// The parameters tell what a point is by its label. Where points of different kinds share one, the
/// later ones in the order of the dictionaries that scripts see (groups by name, in them the
/// store's order; first of all the one whose set has that name) get "_2", "_3" and so on; a point
/// without a label that is no marker gets the name of its set.
[[nodiscard]] std::vector<point_column> point_columns(const strata::data_group& data,
                                                      schema::warnings& notes);

/// Frames, frame rate and time of the first frame of the point groups of `data`.
struct point_time_base {
    std::uint64_t frames = 0;
    double rate = 0.0;
    double start_time_s = 0.0;
};

[[nodiscard]] point_time_base time_base_of(const strata::data_group& data);

} // namespace c3d
