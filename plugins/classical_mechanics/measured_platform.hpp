#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

#include <strata/data_group.hpp>
#include <strata/data_set.hpp>

#include "schema/plate_frame.hpp"

namespace classical_mechanics {

using schema::vector3;

/// How a platform's channels make force and moment.
enum class platform_type : std::int32_t {
    center_of_pressure = 1,     ///< force, point of application, free moment
    force_and_moment = 2,       ///< force, moment about the measuring origin
    eight_forces = 3,           ///< two sensors together along x and y, four along z
    calibrated_six_outputs = 4, ///< what times a matrix is force and moment
};

/// A platform as its group describes it.
struct measured_platform {
    platform_type type = platform_type::force_and_moment;
    schema::plate_frame frame{};
    /// From the measuring origin to the centre of the surface, in the platform's axes.
    vector3 origin{};
    double sensor_x = 0.0; ///< distance of the sensors from the y axis, of eight forces
    double sensor_y = 0.0; ///< from the x axis
    std::array<double, 36> calibration{};             ///< row by row, of six outputs
    std::optional<std::array<double, 12>> polynomial; ///< corrects the point of eight forces
    std::vector<strata::data_set> channels;           ///< in the order of the type
    std::uint64_t samples = 0;                        ///< of each channel
};

/// Throws std::runtime_error that says what the group lacks.
[[nodiscard]] measured_platform read_platform(const strata::data_group& group);

} // namespace classical_mechanics
