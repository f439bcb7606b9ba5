#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "plugins/c3d/analogs/analog_columns.hpp"
#include "plugins/c3d/analogs/write_scaling.hpp"
#include "plugins/c3d/parameters/parameter_tree.hpp"
#include "plugins/c3d/parameters/put_entries.hpp"
#include "plugins/c3d/samples/sample_source.hpp"
#include "schema/warnings.hpp"

namespace c3d {

/// How often analog channels are sampled.
struct analog_rate {
    std::uint64_t samples_per_frame = 1;
    double point_rate = 0.0; ///< frames per second
    double rate = 0.0;       ///< samples per second of the file that was read; 0 without one
};

/// Makes the parameters of ANALOG tell what the channels are, and gives the source of each
/// channel's samples; see put_analog_scaling. A list from which a reader would already take the
/// same stays as it is.
[[nodiscard]] std::vector<sample_source>
put_analogs(parameter_tree& tree, std::span<const analog_column> columns, const analog_rate& rate,
            const stored_form& form, surplus rule, schema::warnings& notes);

} // namespace c3d
