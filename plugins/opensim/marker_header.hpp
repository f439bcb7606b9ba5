#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "plugins/opensim/line_reader.hpp"
#include "schema/warnings.hpp"

namespace opensim {

/// What every TRC file begins with.
inline constexpr std::string_view marker_signature = "PathFileType";

/// Columns of a row: the frame number and the time, then those of each marker.
inline constexpr std::size_t columns_before_markers = 2;
inline constexpr std::size_t components = 3;

/// What stands before the rows of a TRC file.
struct marker_header {
    std::optional<double> rate;          ///< Hz, above 0
    std::optional<std::uint64_t> frames; ///< NumFrames
    std::uint64_t line_of_values = 0;    ///< the line that says so
    std::string unit;                    ///< of all coordinates
    std::vector<std::string> labels;     ///< of all markers that have coordinates
};

/// Reads up to the first row. What contradicts the columns is noted. Throws text_error.
[[nodiscard]] marker_header read_marker_header(line_reader& lines, schema::warnings& notes);

} // namespace opensim
