#pragma once

#include <strata/data_group.hpp>

#include "plugins/c3d/parameters/parameter_tree.hpp"
#include "schema/warnings.hpp"

namespace c3d {

/// The groups and parameters below `Metadata` of `format`, as the file that was read had them:
/// order, spelling, ids, types, widths, lock flags and descriptions. What a script has added comes
/// behind, groups behind groups and parameters behind parameters; a script's types become the
/// nearest ones of C3D that hold every value: texts characters, integers words or, where they are
/// too large, reals. Attributes of `Metadata` itself are no parameters; those of scripts are
/// noted. So is a parameter too large for the format that follows from points or channels: it is
/// left to those who make it anew.
///
/// An acquisition that was not read begins with the groups POINT, ANALOG and FORCE_PLATFORM.
///
/// Throws export_error when the format cannot hold something.
[[nodiscard]] parameter_tree written_metadata(const strata::data_group& format,
                                              schema::warnings& notes);

} // namespace c3d
