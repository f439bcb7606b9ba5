#pragma once

#include <cstdint>
#include <vector>

#include "plugins/c3d/bytes/number_format.hpp"
#include "plugins/c3d/parameters/c3d_file.hpp"

namespace c3d {

/// Analog channels, and samples of each in a frame.
struct analog_grid {
    std::uint64_t channels = 0;
    std::uint64_t samples_per_frame = 1;

    bool operator==(const analog_grid&) const = default;
};

/// What header and parameters say about one side of the layout, the most trusted first and nothing
/// twice. Never empty, except for the data section, whose place may be outside the file.
struct layout_candidates {
    std::vector<std::uint64_t> data_offsets; ///< inside the file, or at its end
    std::vector<std::uint64_t> points;
    std::vector<sample_storage> storages;
    std::vector<analog_grid> grids;
    double point_rate = 0.0;  ///< Hz; 0 when nobody tells
    double analog_rate = 0.0; ///< Hz, as ANALOG:RATE has it; 0 when it does not
};

[[nodiscard]] layout_candidates candidates_of(const c3d_file& file);

} // namespace c3d
