#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include <strata/data_group.hpp>

#include "layout/plate_frame.hpp"

namespace acquisition_layout {

/// Where the parameters of force platforms lie, from the root of an acquisition.
inline constexpr std::string_view force_platform_path = "Format/Metadata/FORCE_PLATFORM";

/// A square matrix, row by row.
struct square_matrix {
    std::size_t size = 0; ///< rows; 0 without a matrix
    std::vector<double> elements;

    [[nodiscard]] double at(std::size_t row, std::size_t column) const {
        return elements[row * size + column];
    }
};

/// One platform as the parameters describe it. What they lack, or hold as something else than
/// numbers, is absent.
struct force_platform {
    std::int64_t type = 0; ///< 0 when it is missing or no whole number
    /// Numbers of analog columns, counted from 1, in the order of the type; 0 for one that is not
    /// used. As many as a platform of that type has, fewer when the table is narrower; for types
    /// with an unknown number of channels all that are not 0.
    std::vector<std::int64_t> channels;
    std::optional<plate_corners> corners;
    std::optional<vector3> origin;  ///< as stored
    square_matrix calibration;      ///< the part for the platform's channels
    std::vector<double> polynomial; ///< 12 coefficients, or none
};

/// Channels of a platform of a type; 0 for types that nobody has described.
[[nodiscard]] constexpr std::size_t channels_of_type(std::int64_t type) noexcept {
    if (type == 3)
        return 8;
    return type == 1 || type == 2 || type == 4 ? 6 : 0;
}

/// The platforms of an acquisition; none without the parameters. There are as many as USED says, no
/// more than TYPE has entries; without USED as many as TYPE has, without TYPE no more than the
/// longest of the other tables has. Tables whose dimensions were flattened are understood.
[[nodiscard]] std::vector<force_platform> read_force_platforms(const strata::data_group& root);

} // namespace acquisition_layout
