#pragma once

#include <cstdint>
#include <vector>

#include <strata/data_group.hpp>

#include "plugins/c3d/parameters/parameter_tree.hpp"
#include "plugins/c3d/samples/sample_source.hpp"

namespace c3d {

/// The rotations of a file, row by row.
struct rotation_source {
    std::uint64_t rows = 0;
    bool is_complete = true;            ///< false when the frames ask for more rows
    std::vector<sample_source> columns; ///< 17 for each segment

    [[nodiscard]] std::uint64_t bytes() const noexcept { return rows * 4 * columns.size(); }
};

/// The rotations of the group `Data`, as many rows as their `NumSamples` says and no more than
/// belong to `frames` frames; those that came to be by a change of the number of frames are
/// invalid. An acquisition without frames has all rows. Makes the parameters of ROTATION tell them,
/// but for DATA_START; nothing is left of them but USED 0 where there are no rotations.
[[nodiscard]] rotation_source put_rotations(parameter_tree& tree, const strata::data_group& data,
                                            std::uint64_t frames, double point_rate);

} // namespace c3d
