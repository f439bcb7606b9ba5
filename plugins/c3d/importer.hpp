// The C3D plugin, from the ground up: a folder includes nothing of those that come after it.
//
// | file            |                                                               |
// |-----------------|---------------------------------------------------------------|
// | bytes/          | numbers and texts of files, reading and writing bytes, errors |
// | parameters/     | header and parameters                                         |
// | frames/         | how many frames there are, and where their samples lie        |
// | samples/        | samples between a data section and the channels               |
// | points/         | what a point is: label, kind, unit; its set, its parameters   |
// | analogs/        | the same of analog channels, and their scales                 |
// | events/         | events of EVENT and of the header, and their sets             |
// | rotations/      | the rotation section and its segments                         |
// | platforms/      | force platforms for whoever computes wrenches                 |
// | importer        | a file as a whole becomes an acquisition                      |
// | header_group    | what scripts, and the exporter, learn of the header: `Header` |
// | exporter        | an acquisition becomes a file as a whole                      |
// | require_split   | refuses to write what would lose channels                     |
// | written_content | all that a file is made of, before any of it is written       |
// | dec_range       | refuses numbers that reals of DEC files cannot hold           |
// | header_block    | the header of a file that is written                          |
// | section_places  | the blocks where samples and rotations begin                  |
// | plugin          | what the plugin offers                                        |

#pragma once

#include <anvil/io_device.hpp>
#include <anvil/status.hpp>

#include <strata/data_group.hpp>
#include <strata/plugin/plugin.hpp>

namespace c3d {

/// Reads C3D files: the group `Format` with `Metadata`, `Header` and, below `Data`, the sets
/// `Points`, `Analogs` and, where a file has rotations, `Rotations`. What is odd about a file goes
/// to the store's log. Of a file of which only some kinds of channels are wanted
/// (schema/partial_reading.hpp) no others are decoded; the root keeps which ones there are.
class importer final : public strata::importer {
  public:
    [[nodiscard]] bool accepts(anvil::io_device& device) const override;

    /// Nothing is created before the file has been read as a whole.
    [[nodiscard]] anvil::status read(anvil::io_device& device,
                                     strata::data_group target) const override;
};

} // namespace c3d
