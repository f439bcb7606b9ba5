#include "plugins/c3d/points/point_scale.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "plugins/c3d/parameters/header_attribute.hpp"
#include "schema/names.hpp"
#include "schema/read_attribute.hpp"

namespace c3d {

namespace {

/// What integers of 16 bits hold, with some room: who makes integers of the file later needs no
/// other scale.
constexpr float wanted_range = 32000.0F;

float largest_coordinate(std::span<const point_source> points, std::uint64_t frames) {
    constexpr std::size_t block = 4096;
    std::vector<float> scratch(block);
    float largest = 0.0F;
    for (const auto& point : points) {
        for (const auto& source : point.coordinates) {
            for (std::uint64_t first = 0; first < frames; first += block) {
                const auto count =
                    static_cast<std::size_t>(std::min<std::uint64_t>(block, frames - first));
                const auto* values =
                    source.singles(static_cast<std::size_t>(first), count, scratch.data());
                for (std::size_t i = 0; i < count; ++i) {
                    const auto magnitude = std::abs(values[i]);
                    largest = magnitude > largest && std::isfinite(magnitude) ? magnitude : largest;
                }
            }
        }
    }
    return largest;
}

} // namespace

float point_scale_of(const strata::data_group& format, std::span<const point_source> points,
                     std::uint64_t frames) {
    const auto read =
        schema::read_number<float>(header_attribute(format, schema::attribute::point_scale))
            .value_or(0.0F);
    if (std::isfinite(read) && read != 0.0F)
        return -std::abs(read);
    const auto scale = largest_coordinate(points, frames) / wanted_range;
    return scale > 0.0F ? -scale : -1.0F;
}

} // namespace c3d
