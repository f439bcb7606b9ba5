#pragma once

#include <array>
#include <string>
#include <string_view>

namespace mox {

/// One of the five kinds of points.
struct point_type {
    std::string_view word;       ///< type word: "marker"
    std::string_view group_name; ///< name below `Format/Data`: "Markers"
    std::string_view path;       ///< path of the group
    std::string_view tag; ///< what follows "ALL" in the units of the kind's reader: "MARKERS"
    std::string_view default_unit; ///< unit where nothing names one
};

/// All kinds in the order of every walk over them, which sorts both words and group names.
inline constexpr std::array<point_type, 5> point_types{{
    {"angle", "Angles", "Format/Data/Angles", "ANGLES", "deg"},
    {"force", "Forces", "Format/Data/Forces", "FORCES", "N"},
    {"marker", "Markers", "Format/Data/Markers", "MARKERS", "mm"},
    {"moment", "Moments", "Format/Data/Moments", "MOMENTS", "Nmm"},
    {"power", "Powers", "Format/Data/Powers", "POWERS", "W"},
}};

/// The kind whose type word is `word`; RuntimeError "Unsupported point type : ..." when there is
/// none.
[[nodiscard]] const point_type& point_type_of_word(std::string_view word);

/// The kind whose group is called `name`, compared exactly; null when there is none.
[[nodiscard]] const point_type* find_point_type_of_group(std::string_view name) noexcept;

} // namespace mox
