#pragma once

#include <array>
#include <string_view>

#include "schema/names.hpp"

namespace schema {

/// One of the five kinds of points, as scripts, the store and files call it.
struct point_kind {
    std::string_view word;       ///< type word: "marker"
    std::string_view group_name; ///< group of its points below `data`: "Markers"
    std::string_view path;       ///< path of that group
    std::string_view tag; ///< what follows "ALL" in the units of the kind's reader: "MARKERS"
    std::string_view list_parameter; ///< of POINT, lists the labels; none: all other points
    std::string_view unit_parameter; ///< of POINT
    std::string_view usual_unit;     ///< where that is missing
};

/// All kinds in the order of every walk that scripts see the results of. It sorts both words and
/// group names.
inline constexpr std::array<point_kind, 5> point_kind_table{{
    {"angle", name::angles, angles, "ANGLES", "ANGLES", "ANGLE_UNITS", "deg"},
    {"force", name::forces, forces, "FORCES", "FORCES", "FORCE_UNITS", "N"},
    {"marker", name::markers, markers, "MARKERS", "", "UNITS", "mm"},
    {"moment", name::moments, moments, "MOMENTS", "MOMENTS", "MOMENT_UNITS", "Nmm"},
    {"power", name::powers, powers, "POWERS", "POWERS", "POWER_UNITS", "W"},
}};

/// What a point is where nothing says otherwise.
inline constexpr const point_kind& marker_kind = point_kind_table[2];

/// The same kinds in the order of files: the markers first, since UNITS is the parameter that every
/// file has and the time base is theirs; then those that a file lists by label.
inline constexpr std::array<const point_kind*, 5> point_kinds_in_files{
    &marker_kind, &point_kind_table[0], &point_kind_table[1], &point_kind_table[3],
    &point_kind_table[4]};

} // namespace schema
