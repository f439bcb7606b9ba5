#pragma once

#include <span>
#include <vector>

#include "plugins/c3d/analogs/analog_columns.hpp"
#include "plugins/c3d/bytes/number_format.hpp"
#include "plugins/c3d/parameters/parameter_tree.hpp"
#include "plugins/c3d/parameters/put_entries.hpp"
#include "plugins/c3d/samples/sample_source.hpp"
#include "schema/warnings.hpp"

namespace c3d {

/// How samples are stored.
struct stored_form {
    sample_storage storage = sample_storage::real;
    bool was_integer = false; ///< in the file that was read
};

/// Decides how the channels' values become what the file holds, makes GEN_SCALE, SCALE and OFFSET
/// of ANALOG say so, and gives the source of each channel's samples.
///
/// value = (stored − OFFSET) × SCALE × GEN_SCALE, with `Scale` and `Offset` of the channel and the
/// GEN_SCALE of the metadata. Samples that nobody has changed are written as they were read.
///
/// What a reader could not undo is written otherwise, and noted: a `Scale` or an `Offset` as
/// make_readable says, a GEN_SCALE that is 0 or not finite as 1 when a channel needs another, and
/// an `Offset` that the words of OFFSET cannot hold as 0. In a list of reals, which files may
/// have, no offset is too large or too fine. Integer samples have to be as require_words says, and
/// have a scale as make_fine says, unless the channel had been integers in the file that was read,
/// or ANALOG:FORMAT says that words have no sign.
[[nodiscard]] std::vector<sample_source> put_analog_scaling(parameter_tree& tree,
                                                            std::span<const analog_column> columns,
                                                            const stored_form& form, surplus rule,
                                                            schema::warnings& notes);

} // namespace c3d
