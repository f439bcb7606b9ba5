#pragma once

#include <cstdint>
#include <optional>

#include "plugins/c3d/frames/frame_layout.hpp"
#include "plugins/c3d/parameters/c3d_file.hpp"

namespace c3d {

/// Reals of one transform: 16 matrix elements, column by column, and its reliability.
inline constexpr std::uint64_t rotation_components = 17;

/// Where the rotation section of a file lies: rows of all segments' transforms.
struct rotation_layout {
    std::uint64_t segments = 0;
    /// Rows in a frame; more than `rows` only where a section of all frames would be no longer than
    /// the file.
    std::uint64_t ratio = 1;
    std::uint64_t rows = 0;   ///< that are in the file
    std::uint64_t offset = 0; ///< of the first row in the file
    double rate = 0.0;        ///< rows in a second

    [[nodiscard]] std::uint64_t row_bytes() const noexcept {
        return segments * rotation_components * 4;
    }
};

/// Nothing when the file has no rotations, or none of those that it announces.
[[nodiscard]] std::optional<rotation_layout>
decide_rotations(const c3d_file& file, const frame_layout& frames, schema::warnings& notes);

/// The frames of which the file holds rotations, up to those of `frames`; 0 without rotations.
[[nodiscard]] std::uint64_t frames_with_rotations(const c3d_file& file, const frame_layout& frames);

} // namespace c3d
