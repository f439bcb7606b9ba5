#include "plugins/c3d/points/point_scale.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>

#include "plugins/c3d/parameters/header_attribute.hpp"
#include "plugins/c3d/samples/sample_survey.hpp"
#include "schema/names.hpp"
#include "schema/read_attribute.hpp"

namespace c3d {

namespace {

/// What integers of 16 bits hold, with some room: who makes integers of the file later needs no
/// other scale.
constexpr float wanted_range = 32000.0F;

/// Throws export_error for a coordinate that no single holds.
float largest_coordinate(std::span<const point_source> points, std::uint64_t frames) {
    float largest = 0.0F;
    for (const auto& point : points) {
        for (const auto& source : point.coordinates) {
            for_singles(source, frames, [&](std::size_t first, std::span<const float> singles) {
                require_singles(point, source, first, singles);
                for (auto single : singles) {
                    const auto magnitude = std::abs(single);
                    largest = magnitude > largest && std::isfinite(magnitude) ? magnitude : largest;
                }
            });
        }
    }
    return largest;
}

/// The scale of the file that was read; none without one.
std::optional<float> scale_read(const strata::data_group& format) {
    const auto read =
        schema::read_number<float>(header_attribute(format, schema::attribute::point_scale))
            .value_or(0.0F);
    return std::isfinite(read) && read != 0.0F ? std::optional(std::abs(read)) : std::nullopt;
}

float fitting_scale(float largest) {
    return largest > 0.0F ? std::max(largest / wanted_range, std::numeric_limits<float>::min())
                          : 1.0F;
}

float integer_scale(const strata::data_group& format, std::span<const point_source> points,
                    std::uint64_t frames) {
    constexpr float words_end = 32767.5F;
    const auto largest = largest_coordinate(points, frames);
    const auto read = scale_read(format);
    return read && largest / *read < words_end ? *read : fitting_scale(largest);
}

} // namespace

float point_scale_of(const strata::data_group& format, std::span<const point_source> points,
                     std::uint64_t frames, sample_storage storage) {
    if (storage == sample_storage::integer)
        return integer_scale(format, points, frames);
    const auto read = scale_read(format);
    return -(read ? *read : fitting_scale(largest_coordinate(points, frames)));
}

void make_integers(frame_sources& frames, const strata::data_group& format, float scale) {
    for (auto& point : frames.points) {
        for (auto& coordinate : point.coordinates)
            coordinate = coordinate.divided(double{scale});
    }
    // Without a file that was read, residuals are in the unit of the points.
    frames.residual_factor = double{scale_read(format).value_or(1.0F)} / double{scale};
}

} // namespace c3d
