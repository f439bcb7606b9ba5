#pragma once

#include <cstdint>

#include <strata/data_group.hpp>

#include "plugins/c3d/header_block.hpp"
#include "plugins/c3d/parameters/parameter_tree.hpp"
#include "plugins/c3d/parameters/write_section.hpp"
#include "plugins/c3d/rotations/write_rotations.hpp"
#include "plugins/c3d/samples/write_samples.hpp"
#include "schema/warnings.hpp"

namespace c3d {

/// All that a file is made of, before any of it is written. Samples are still those of the store.
struct written_content {
    header_content header; ///< but for the block of the samples
    section_mark mark;
    parameter_tree parameters; ///< but for the blocks of samples and rotations
    frame_sources frames;
    rotation_source rotations;
};

/// What a file of the acquisition `root` holds. Throws export_error when the format cannot hold it.
[[nodiscard]] written_content content_of(const strata::data_group& root, schema::warnings& notes);

} // namespace c3d
