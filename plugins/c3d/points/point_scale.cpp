#include "plugins/c3d/points/point_scale.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>

#include "plugins/c3d/parameters/header_attribute.hpp"
#include "plugins/c3d/parameters/written_form.hpp"
#include "plugins/c3d/samples/sample_survey.hpp"
#include "schema/names.hpp"
#include "schema/read_attribute.hpp"

namespace c3d {

namespace {

/// What integers of 16 bits hold, with some room: who makes integers of the file later needs no
/// other scale.
constexpr float wanted_range = 32000.0F;

/// Calls `take` with each coordinate that is a number. Throws export_error for one that no single
/// holds.
template <typename Take>
void for_coordinates(std::span<const point_source> points, std::uint64_t frames, Take take) {
    for (const auto& point : points) {
        for (const auto& source : point.coordinates) {
            for_singles(source, frames, [&](std::size_t first, std::span<const float> singles) {
                require_singles(point, source, first, singles);
                for (const auto single : singles) {
                    if (std::isfinite(single))
                        take(single);
                }
            });
        }
    }
}

float largest_coordinate(std::span<const point_source> points, std::uint64_t frames) {
    float largest = 0.0F;
    for_coordinates(points, frames,
                    [&](float single) { largest = std::max(largest, std::abs(single)); });
    return largest;
}

/// Whether all coordinates are multiples of `step`, as those are that were integers once.
bool are_multiples(std::span<const point_source> points, std::uint64_t frames, float step) {
    constexpr float rounding = 1.0F / 256.0F; // that of a single that counts up to 32,767 steps
    bool all = true;
    for_coordinates(points, frames, [&](float single) {
        const auto steps = single / step;
        all = all && std::abs(steps - std::round(steps)) <= rounding;
    });
    return all;
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

/// Beside real samples the scale says of the residuals alone what they are multiples of; it is 1 in
/// many files. Coordinates that never were multiples of it would lose digits.
float integer_scale(const strata::data_group& format, std::span<const point_source> points,
                    std::uint64_t frames) {
    constexpr float words_end = 32767.5F;
    const auto largest = largest_coordinate(points, frames);
    const auto fitting = fitting_scale(largest);
    const auto read = scale_read(format);
    const bool holds_all = read && largest / *read < words_end;
    const bool is_kept = holds_all && (was_integer(format) || *read <= fitting ||
                                       are_multiples(points, frames, *read));
    return is_kept ? *read : fitting;
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
