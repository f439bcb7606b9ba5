#pragma once

#include <span>

#include <strata/data_group.hpp>

#include "plugins/c3d/analogs/analog_columns.hpp"
#include "plugins/c3d/parameters/parameter_tree.hpp"

namespace c3d {

/// Makes FORCE_PLATFORM:CHANNEL name the channels that it named, by the numbers that they have in
/// `columns`. One that is gone becomes 0, which means no channel; numbers that never meant a
/// channel of the file stay.
void put_platform_channels(parameter_tree& tree, const strata::data_group& root,
                           std::span<const analog_column> columns);

} // namespace c3d
