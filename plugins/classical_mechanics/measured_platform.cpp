#include "plugins/classical_mechanics/measured_platform.hpp"

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <string>

#include <fmt/format.h>

#include "schema/names.hpp"
#include "schema/read_attribute.hpp"

namespace classical_mechanics {

namespace attribute = schema::attribute;

namespace {

template <std::size_t Count>
std::array<double, Count> numbers_of(const strata::data_group& group, const char* name) {
    const auto values = schema::read_numbers<double>(group.retrieve_attribute(name));
    if (values.size() != Count)
        throw std::runtime_error(fmt::format("the attribute '{}' has no {} numbers", name, Count));
    std::array<double, Count> result{};
    std::ranges::copy(values, result.begin());
    return result;
}

platform_type type_of(const strata::data_group& group) {
    const auto type =
        schema::read_number<std::int32_t>(group.retrieve_attribute(attribute::platform_type))
            .value_or(0);
    if (type < 1 || type > 4)
        throw std::runtime_error(fmt::format("the platform's type is {}, not 1 to 4", type));
    return static_cast<platform_type>(type);
}

schema::plate_frame frame_of(const strata::data_group& group) {
    const auto numbers = numbers_of<12>(group, attribute::corners);
    schema::plate_corners corners{};
    for (std::size_t i = 0; i < numbers.size(); ++i)
        corners[i / 3][i % 3] = numbers[i];
    const auto frame = schema::frame_of_corners(corners);
    if (!frame)
        throw std::runtime_error("the platform's corners span no plane");
    return *frame;
}

std::vector<strata::data_set> channels_of(const strata::data_group& group, platform_type type) {
    if (!group.exists_group(schema::name::platform_channels))
        throw std::runtime_error("the platform has no channels");
    const auto links = group.retrieve_group(schema::name::platform_channels);
    std::vector<strata::data_set> channels;
    for (const auto& name : links.list_set_children_name())
        channels.push_back(links.retrieve_set(name));
    const std::size_t expected = type == platform_type::eight_forces ? 8 : 6;
    if (channels.size() != expected) {
        throw std::runtime_error(
            fmt::format("the platform has {} channels, not {}", channels.size(), expected));
    }
    return channels;
}

std::uint64_t samples_of(const std::vector<strata::data_set>& channels) {
    std::optional<std::int64_t> samples;
    for (const auto& channel : channels) {
        const auto shape = channel.shape(false);
        const auto& extents = shape.dimensions();
        if (extents.empty() || (samples && *samples != extents.back()))
            throw std::runtime_error("the platform's channels differ in length");
        samples = extents.back();
    }
    return static_cast<std::uint64_t>(samples.value_or(0));
}

} // namespace

measured_platform read_platform(const strata::data_group& group) {
    measured_platform platform;
    platform.type = type_of(group);
    platform.frame = frame_of(group);
    platform.origin = numbers_of<3>(group, attribute::origin);
    if (platform.type == platform_type::eight_forces) {
        // Here the origin's first two numbers say where the sensors are, not where it is.
        platform.sensor_x = platform.origin[0];
        platform.sensor_y = platform.origin[1];
        platform.origin[0] = platform.origin[1] = 0.0;
        if (group.exists_attribute(attribute::pressure_polynomial))
            platform.polynomial = numbers_of<12>(group, attribute::pressure_polynomial);
    }
    if (platform.type == platform_type::calibrated_six_outputs)
        platform.calibration = numbers_of<36>(group, attribute::calibration);
    platform.channels = channels_of(group, platform.type);
    platform.samples = samples_of(platform.channels);
    return platform;
}

} // namespace classical_mechanics
