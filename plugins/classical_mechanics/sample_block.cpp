#include "plugins/classical_mechanics/sample_block.hpp"

#include <cmath>
#include <limits>
#include <stdexcept>

#include <fmt/format.h>

#include <strata/access/strided_read.hpp>

namespace classical_mechanics {

namespace {

constexpr double no_value = std::numeric_limits<double>::quiet_NaN();

/// Takes what warps the measured point near the edges off it.
void correct_point(const std::array<double, 12>& p, double& x, double& y) {
    const auto xx = x * x;
    const auto yy = y * y;
    const auto dx =
        (p[0] * yy * yy + p[1] * yy + p[2]) * xx * x + (p[3] * yy * yy + p[4] * yy + p[5]) * x;
    const auto dy =
        (p[6] * xx * xx + p[7] * xx + p[8]) * yy * y + (p[9] * xx * xx + p[10] * xx + p[11]) * y;
    x -= dx;
    y -= dy;
}

} // namespace

void sample_block::load(const measured_platform& platform, std::uint64_t first,
                        std::size_t samples) {
    samples_ = samples;
    for (std::size_t i = 0; i < platform.channels.size(); ++i) {
        if (!strata::read_strided(platform.channels[i], 0, 0, first, samples, channels_[i].data(),
                                  1))
            throw std::runtime_error(
                fmt::format("the channel '{}' holds no numbers", platform.channels[i].name()));
    }
    combine_channels(platform);
}

void sample_block::combine_channels(const measured_platform& platform) {
    switch (platform.type) {
    case platform_type::center_of_pressure:
        combine_center_of_pressure(platform.origin);
        return;
    case platform_type::eight_forces:
        combine_eight_forces(platform.sensor_x, platform.sensor_y);
        return;
    case platform_type::calibrated_six_outputs:
        combine_six_outputs(platform.calibration);
        return;
    case platform_type::force_and_moment:
        for (std::size_t axis = 0; axis < 3; ++axis) {
            force_[axis] = channels_[axis];
            moment_[axis] = channels_[3 + axis];
        }
        return;
    }
}

void sample_block::combine_center_of_pressure(const vector3& origin) {
    for (std::size_t axis = 0; axis < 3; ++axis)
        force_[axis] = channels_[axis];
    for (std::size_t i = 0; i < samples_; ++i) {
        const auto fx = channels_[0][i];
        const auto fy = channels_[1][i];
        const auto fz = channels_[2][i];
        // From the measuring origin to the point: the origin lies below the surface centre.
        const auto x = origin[0] + channels_[3][i];
        const auto y = origin[1] + channels_[4][i];
        const auto z = origin[2];
        moment_[0][i] = y * fz - z * fy;
        moment_[1][i] = z * fx - x * fz;
        moment_[2][i] = x * fy - y * fx + channels_[5][i];
    }
}

/// The sensors stand in the quadrants of their numbers: 1 (+x, +y), 2 (−x, +y), 3 (−x, −y),
/// 4 (+x, −y). Fx12 is that of 1 and 2 together, and so on.
void sample_block::combine_eight_forces(double sensor_x, double sensor_y) {
    const auto& [fx12, fx34, fy14, fy23, fz1, fz2, fz3, fz4] = channels_;
    for (std::size_t i = 0; i < samples_; ++i) {
        force_[0][i] = fx12[i] + fx34[i];
        force_[1][i] = fy14[i] + fy23[i];
        force_[2][i] = fz1[i] + fz2[i] + fz3[i] + fz4[i];
        moment_[0][i] = sensor_y * (fz1[i] + fz2[i] - fz3[i] - fz4[i]);
        moment_[1][i] = sensor_x * (-fz1[i] + fz2[i] + fz3[i] - fz4[i]);
        moment_[2][i] = sensor_y * (fx34[i] - fx12[i]) + sensor_x * (fy14[i] - fy23[i]);
    }
}

void sample_block::combine_six_outputs(const std::array<double, 36>& calibration) {
    for (std::size_t row = 0; row < 6; ++row) {
        auto& result = row < 3 ? force_[row] : moment_[row - 3];
        const auto* factors = calibration.data() + 6 * row;
        for (std::size_t i = 0; i < samples_; ++i) {
            double sum = 0.0;
            for (std::size_t output = 0; output < 6; ++output)
                sum += factors[output] * channels_[output][i];
            result[i] = sum;
        }
    }
}

void sample_block::locate(const measured_platform& platform, wrench_location location,
                          double fz_threshold) {
    if (location == wrench_location::point_of_application) {
        find_point_of_application(platform);
        forget_points_under(fz_threshold);
        moment_ = applied_moment_;
        return;
    }
    for (std::size_t axis = 0; axis < 3; ++axis)
        point_[axis].fill(-platform.origin[axis]);
}

void sample_block::find_point_of_application(const measured_platform& platform) {
    const auto& origin = platform.origin;
    const bool is_measured = platform.type == platform_type::center_of_pressure;
    for (std::size_t i = 0; i < samples_; ++i) {
        const auto fx = force_[0][i];
        const auto fy = force_[1][i];
        const auto fz = force_[2][i];
        // The moment about the surface centre: that about the measuring origin + F × origin.
        const auto mx = moment_[0][i] + fy * origin[2] - fz * origin[1];
        const auto my = moment_[1][i] + fz * origin[0] - fx * origin[2];
        const auto mz = moment_[2][i] + fx * origin[1] - fy * origin[0];
        auto x = is_measured ? channels_[3][i] : -my / fz;
        auto y = is_measured ? channels_[4][i] : mx / fz;
        if (platform.polynomial)
            correct_point(*platform.polynomial, x, y);
        point_[0][i] = x;
        point_[1][i] = y;
        point_[2][i] = 0.0;
        applied_moment_[0][i] = 0.0;
        applied_moment_[1][i] = 0.0;
        applied_moment_[2][i] = is_measured ? channels_[5][i] : mz - (x * fy - y * fx);
    }
}

/// The point is a quotient by Fz: beside a small one it is the noise of the moments.
void sample_block::forget_points_under(double fz_threshold) {
    for (std::size_t i = 0; i < samples_; ++i) {
        const auto load = std::abs(force_[2][i]);
        // A force that is no number is not over the threshold either.
        if (load >= fz_threshold && load > 0.0)
            continue;
        for (std::size_t axis = 0; axis < 3; ++axis) {
            point_[axis][i] = no_value;
            applied_moment_[axis][i] = moment_[axis][i];
        }
    }
}

void sample_block::transform(const schema::plate_frame& frame) {
    for (auto* vectors : {&force_, &moment_, &point_}) {
        const auto& offset = vectors == &point_ ? frame.centre : vector3{};
        auto& [x, y, z] = *vectors;
        for (std::size_t i = 0; i < samples_; ++i) {
            const auto turned = frame.to_laboratory({x[i], y[i], z[i]});
            x[i] = turned[0] + offset[0];
            y[i] = turned[1] + offset[1];
            z[i] = turned[2] + offset[2];
        }
    }
}

} // namespace classical_mechanics
