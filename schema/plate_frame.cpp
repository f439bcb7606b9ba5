#include "schema/plate_frame.hpp"

#include <cmath>
#include <cstddef>

namespace schema {

namespace {

/// Sine of the smallest angle between two edges. Corners are stored in single precision: what is
/// closer to a line than this is one.
constexpr double smallest_sine = 1e-5;

vector3 difference(const vector3& left, const vector3& right) noexcept {
    return {left[0] - right[0], left[1] - right[1], left[2] - right[2]};
}

vector3 cross(const vector3& left, const vector3& right) noexcept {
    return {left[1] * right[2] - left[2] * right[1], left[2] * right[0] - left[0] * right[2],
            left[0] * right[1] - left[1] * right[0]};
}

/// Not std::hypot, whose last digit is another in each C++ library. The squares of numbers that
/// were stored in single precision neither overflow nor vanish.
double length(const vector3& vector) noexcept {
    return std::sqrt(vector[0] * vector[0] + vector[1] * vector[1] + vector[2] * vector[2]);
}

vector3 divided(const vector3& vector, double divisor) noexcept {
    return {vector[0] / divisor, vector[1] / divisor, vector[2] / divisor};
}

} // namespace

std::optional<plate_frame> frame_of_corners(const plate_corners& corners) noexcept {
    const auto along_x = difference(corners[0], corners[1]);
    const auto along_y = difference(corners[0], corners[3]);
    const auto width = length(along_x);
    const auto depth = length(along_y);
    // Written so that NaN fails, too.
    if (!(width > 0.0 && depth > 0.0 && std::isfinite(width) && std::isfinite(depth)))
        return std::nullopt;
    plate_frame frame{};
    frame.x = divided(along_x, width);
    const auto normal = cross(frame.x, divided(along_y, depth));
    const auto sine = length(normal);
    if (!(sine > smallest_sine))
        return std::nullopt;
    frame.z = divided(normal, sine);
    frame.y = cross(frame.z, frame.x);
    for (std::size_t axis = 0; axis < 3; ++axis) {
        frame.centre[axis] =
            (corners[0][axis] + corners[1][axis] + corners[2][axis] + corners[3][axis]) / 4.0;
        if (!std::isfinite(frame.centre[axis]))
            return std::nullopt;
    }
    return frame;
}

} // namespace schema
