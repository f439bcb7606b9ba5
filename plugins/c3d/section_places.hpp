#pragma once

#include <cstdint>

namespace c3d {

/// The blocks where the sections behind the parameters begin.
struct section_places {
    std::uint64_t data = 0;
    std::uint64_t rotations = 0; ///< 0 when there are none

    [[nodiscard]] bool rotations_come_first() const noexcept {
        return rotations != 0 && rotations < data;
    }
};

/// Places the samples and, behind them, the rotations, for parameters that take so many blocks. A
/// file numbers blocks in 16 bits: behind samples that are too long for that, the rotations could
/// not be found, so they come first. Throws export_error when both are too long, and when rotations
/// of which rows are missing would come first: only the end of the file tells how many there are.
[[nodiscard]] section_places places_of(std::uint64_t parameter_blocks, std::uint64_t data_bytes,
                                       std::uint64_t rotation_bytes, bool are_complete = true);

} // namespace c3d
