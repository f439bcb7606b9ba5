#pragma once

#include <strata/data_group.hpp>

namespace mox {

/// Turns what an importer left below `root` into the layout of an acquisition: points and analog
/// channels of their own, rotations, events. RuntimeError when the rotations cannot be processed;
/// the other steps leave out what they cannot do and say so in the log and among the warnings of
/// source_record.hpp, and the raw sets keep how many of their channels were split.
void shape_imported_layout(strata::data_group root);

} // namespace mox
