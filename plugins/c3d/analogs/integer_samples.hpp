#pragma once

#include <span>

#include "plugins/c3d/analogs/analog_columns.hpp"
#include "plugins/c3d/analogs/channel_scaling.hpp"
#include "plugins/c3d/parameters/parameter_table.hpp"
#include "schema/warnings.hpp"

namespace c3d {

/// Throws export_error, which names the channel, for a value that no word with the scale and the
/// offset of `table` comes within half a step of: words have a sign unless ANALOG:FORMAT, or the
/// offset, tells a reader that they have none. Channels that rounding changes are noted.
void require_words(const parameter_table& table, std::span<const analog_column> columns,
                   std::span<const channel_scaling> channels, double general,
                   schema::warnings& notes);

} // namespace c3d
