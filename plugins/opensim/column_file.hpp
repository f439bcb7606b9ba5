#pragma once

#include <string_view>

#include "plugins/opensim/line_reader.hpp"
#include "plugins/opensim/trial_tree.hpp"
#include "schema/warnings.hpp"

namespace opensim {

/// What the header of every MOT and STO file ends with.
inline constexpr std::string_view header_end = "endheader";

/// Whether a line is that, however it is spelt.
[[nodiscard]] bool is_header_end(std::string_view line);

/// The columns of a MOT or an STO file as analog channels. What contradicts the rows is noted.
/// Throws text_error where it is none.
[[nodiscard]] trial_content read_columns(line_reader& lines, schema::warnings& notes);

} // namespace opensim
