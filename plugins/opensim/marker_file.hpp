#pragma once

#include "plugins/opensim/line_reader.hpp"
#include "plugins/opensim/trial_tree.hpp"
#include "schema/warnings.hpp"

namespace opensim {

/// The markers of a TRC file. What contradicts the rows is noted. Throws text_error where it is
/// none.
[[nodiscard]] trial_content read_markers(line_reader& lines, schema::warnings& notes);

} // namespace opensim
