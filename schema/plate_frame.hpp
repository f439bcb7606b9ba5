#pragma once

#include <array>
#include <optional>

namespace schema {

using vector3 = std::array<double, 3>;

/// Corners of a force platform in the laboratory: (+x,+y), (−x,+y), (−x,−y), (+x,−y) in its own
/// axes.
using plate_corners = std::array<vector3, 4>;

/// Axes and centre of a platform's surface in the laboratory. The axes are orthonormal and
/// right-handed.
struct plate_frame {
    vector3 x;
    vector3 y;
    vector3 z;
    vector3 centre;

    /// A vector given in the platform's axes, in those of the laboratory.
    [[nodiscard]] vector3 to_laboratory(const vector3& vector) const noexcept {
        vector3 result{};
        for (std::size_t i = 0; i < 3; ++i)
            result[i] = x[i] * vector[0] + y[i] * vector[1] + z[i] * vector[2];
        return result;
    }
};

/// x runs from the second corner to the first; z is normal to it and to the edge from the fourth
/// corner to the first, y completes them, so that corners which are not quite rectangular give
/// orthonormal axes. The centre is the mean of the corners. Nothing when the corners span no plane
/// or are no numbers.
[[nodiscard]] std::optional<plate_frame> frame_of_corners(const plate_corners& corners) noexcept;

} // namespace schema
