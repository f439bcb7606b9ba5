// Trials from the text files of OpenSim: TRC has markers, MOT and STO have columns over time.
//
// | file            |                                                    |
// |-----------------|----------------------------------------------------|
// | line_reader     | a file in pieces, line by line                     |
// | cells           | a line's words, and its numbers                    |
// | number_text     | what a text says as a number                       |
// | text_error      | why a text is no such file, and where              |
// | row_cells       | the numbers of a row, in their order               |
// | sample_rows     | rows become channels                               |
// | even_steps      | the step between times that were rounded           |
// | row_times       | the times of rows become a time base               |
// | marker_header   | what a TRC file says before its rows               |
// | marker_file     | its markers                                        |
// | marker_importer | what the store calls for it                        |
// | column_header   | what a MOT or an STO file says before its rows     |
// | column_file     | its columns                                        |
// | column_importer | what the store calls for it                        |
// | trial_tree      | a trial becomes a tree                             |
// | import_trial    | a file becomes a tree, or a failure with its place |
// | plugin          | what the plugin offers                             |

#pragma once

#include <span>
#include <string>

#include <anvil/io_device.hpp>
#include <anvil/status.hpp>
#include <strata/data_group.hpp>

#include "plugins/opensim/line_reader.hpp"
#include "plugins/opensim/trial_tree.hpp"
#include "schema/warnings.hpp"

namespace opensim {

/// What makes a trial of a text.
using trial_reader = trial_content (*)(line_reader& lines, schema::warnings& notes);

/// Fills `target` with what `read` makes of the device's content; the tree is touched only when
/// that is complete. A failure names the file and the place; what was noted is logged, and kept
/// where an acquisition keeps it.
[[nodiscard]] anvil::status import_trial(anvil::io_device& device, strata::data_group target,
                                         trial_reader read);

/// The first bytes of a device, as many as tell what it is; none where it cannot be read.
[[nodiscard]] std::string start_of(anvil::io_device& device);

} // namespace opensim
