#pragma once

#include <string>
#include <vector>

#include <strata/data_group.hpp>
#include <strata/plugin/channel_buffer.hpp>

#include "plugins/opensim/row_times.hpp"

namespace opensim {

/// Channels of one set, each with a sample a frame.
struct channel_table {
    std::vector<strata::channel_buffer> samples;
    std::vector<std::string> labels; ///< as many as channels
    std::vector<std::string> units;  ///< as many as channels
};

/// All that a file gives a trial.
struct trial_content {
    time_base time;
    channel_table points; ///< three components, NaN in all of them where a point was not seen
    channel_table analogs;
};

/// Creates in `target`, the root, what the importer of a C3D file with the same content creates:
/// the raw sets, the header and the parameters of POINT and ANALOG. All rows have been looked at by
/// then; of kinds that nobody wants (schema/partial_reading.hpp) no channel is kept.
void create_tree(strata::data_group& target, trial_content content);

} // namespace opensim
