#pragma once

#include <strata/data_group.hpp>

namespace c3d {

/// Throws export_error, which says what to do, when channels of the file that the acquisition
/// `root` was read from never became channels of the acquisition: written over that file, it would
/// lose them. Channels that were removed since are none of these.
void require_split(const strata::data_group& root);

} // namespace c3d
