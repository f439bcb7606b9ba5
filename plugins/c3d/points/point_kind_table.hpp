#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace c3d {

/// A kind of points, and where a file and the store say which points are of it.
struct point_kind {
    std::string_view type;
    std::string_view group;  ///< group of the points below `Format/Data`
    std::string_view labels; ///< parameter of POINT that lists the labels; none: all other points
    std::string_view unit;   ///< parameter of POINT with their unit
    std::string_view usual_unit; ///< where that is missing
};

inline constexpr std::array<point_kind, 5> point_kind_table = {{
    {"marker", "Markers", "", "UNITS", "mm"},
    {"angle", "Angles", "ANGLES", "ANGLE_UNITS", "deg"},
    {"force", "Forces", "FORCES", "FORCE_UNITS", "N"},
    {"moment", "Moments", "MOMENTS", "MOMENT_UNITS", "Nmm"},
    {"power", "Powers", "POWERS", "POWER_UNITS", "W"},
}};
inline constexpr std::size_t marker_kind = 0;

} // namespace c3d
