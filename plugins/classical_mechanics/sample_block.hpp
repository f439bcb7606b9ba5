#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "plugins/classical_mechanics/measured_platform.hpp"
#include "plugins/classical_mechanics/wrench_parameters.hpp"

namespace classical_mechanics {

/// Wrenches of consecutive samples of a platform, few enough to stay in the processor's cache. Each
/// step goes over all samples of the block, so that nothing is decided for a single one but the
/// threshold.
class sample_block {
  public:
    static constexpr std::size_t capacity = 256;
    using column = std::array<double, capacity>;
    using columns = std::array<column, 3>;

    /// Reads the channels from `first` on, at most `capacity` samples, and makes force and moment
    /// about the measuring origin of them, in the platform's axes. Throws std::runtime_error when a
    /// channel cannot be read.
    void load(const measured_platform& platform, std::uint64_t first, std::size_t samples);

    /// Completes the wrench: moment and point, at `location`.
    void locate(const measured_platform& platform, wrench_location location, double fz_threshold);

    /// Turns everything from the platform's axes at its surface centre into the laboratory.
    void transform(const schema::plate_frame& frame);

    [[nodiscard]] const columns& force() const noexcept { return force_; }
    [[nodiscard]] const columns& moment() const noexcept { return moment_; }
    [[nodiscard]] const columns& point() const noexcept { return point_; }

  private:
    void combine_channels(const measured_platform& platform);
    void combine_center_of_pressure(const vector3& origin);
    void combine_eight_forces(double sensor_x, double sensor_y);
    void combine_six_outputs(const std::array<double, 36>& calibration);
    void find_point_of_application(const measured_platform& platform);
    void forget_points_under(double fz_threshold);

    std::size_t samples_ = 0;
    std::array<column, 8> channels_;
    columns force_;
    columns moment_; ///< about the measuring origin until it is located
    columns point_;
    columns applied_moment_; ///< of the wrench at the point of application
};

} // namespace classical_mechanics
