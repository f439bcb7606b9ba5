#include "plugins/c3d/platforms/forceplate_detect.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include <fmt/format.h>

#include <strata/data_set.hpp>
#include <strata/plugin/status_of.hpp>

#include "schema/analog_pairing.hpp"
#include "schema/computations.hpp"
#include "schema/force_platform_table.hpp"
#include "schema/names.hpp"
#include "schema/plate_frame.hpp"
#include "schema/platform_obstacles.hpp"
#include "schema/unit_parameters.hpp"
#include "schema/warnings.hpp"
#include "schema/write_attribute.hpp"

namespace c3d {

namespace argument = schema::argument;

namespace attribute = schema::attribute;

namespace {

using schema::force_platform;
using schema::vector3;

constexpr std::size_t matrix_edge = 6;

vector3 repaired_origin(const force_platform& platform, schema::warnings& notes) {
    constexpr auto* negated = "FORCE_PLATFORM:ORIGIN has a positive z; read with the opposite sign";
    auto origin = platform.origin.value_or(vector3{});
    if (platform.type == 1) {
        if (origin[2] > 0.0)
            notes.add("{}", negated);
        // Its channels measure at the surface.
        return {0.0, 0.0, std::isfinite(origin[2]) ? -std::abs(origin[2]) : 0.0};
    }
    if (platform.type == 3) {
        // The first two are distances: negated with the third they would turn the moments round.
        const vector3 repaired = {std::abs(origin[0]), std::abs(origin[1]), -std::abs(origin[2])};
        if (repaired != origin)
            notes.add("FORCE_PLATFORM:ORIGIN is read with positive x and y and negative z");
        return repaired;
    }
    if (origin[2] > 0.0) {
        // Certificates give the vector from the surface down to the measuring origin.
        notes.add("{}", negated);
        return {-origin[0], -origin[1], -origin[2]};
    }
    return origin;
}

std::vector<double> calibration_of(const force_platform& platform, schema::warnings& notes) {
    const auto& matrix = platform.calibration;
    if (matrix.size >= matrix_edge)
        return matrix.elements;
    notes.add("FORCE_PLATFORM:CAL_MATRIX is missing; the channels are taken as they are");
    std::vector<double> identity(matrix_edge * matrix_edge, 0.0);
    for (std::size_t i = 0; i < matrix_edge; ++i)
        identity[i * matrix_edge + i] = 1.0;
    return identity;
}

/// Requires: all are there.
std::vector<strata::data_set> channels_of(const force_platform& platform,
                                          const std::vector<strata::data_set>& columns,
                                          schema::warnings& notes) {
    std::vector<strata::data_set> channels;
    for (const auto number : platform.channels) {
        // Nobody knows which of the two is meant; what the file says is done.
        if (std::ranges::count(platform.channels, number) > 1)
            notes.add("FORCE_PLATFORM:CHANNEL names the analog channel {} repeatedly", number);
        channels.push_back(columns[static_cast<std::size_t>(number) - 1]);
    }
    return channels;
}

/// What goes into the group, complete before anything is changed.
struct detected_platform {
    force_platform described;
    schema::plate_corners corners{};
    vector3 origin{};
    std::vector<double> calibration; ///< of type 4
    std::vector<strata::data_set> channels;
};

detected_platform detect(const force_platform& described,
                         const std::vector<strata::data_set>& columns, schema::warnings& notes) {
    const auto obstacle = schema::obstacle_of(described, columns);
    if (!obstacle.empty() || !described.corners)
        throw std::runtime_error(obstacle);
    detected_platform platform{
        described, *described.corners, repaired_origin(described, notes), {}, {}};
    platform.channels = channels_of(described, columns, notes);
    if (described.type == 4)
        platform.calibration = calibration_of(described, notes);
    return platform;
}

void write_group(strata::data_group group, const detected_platform& platform) {
    const auto& described = platform.described;
    schema::write_number(group, attribute::platform_type,
                         static_cast<std::int32_t>(described.type));
    std::vector<double> corners;
    for (const auto& corner : platform.corners)
        corners.insert(corners.end(), corner.begin(), corner.end());
    schema::write_numbers(group, attribute::corners, strata::data_shape({4, 3}, false),
                          std::span<const double>(corners));
    schema::write_numbers(group, attribute::origin,
                          std::vector<double>(platform.origin.begin(), platform.origin.end()));
    if (described.type == 4) {
        constexpr auto edge = static_cast<std::int64_t>(matrix_edge);
        schema::write_numbers(group, attribute::calibration,
                              strata::data_shape({edge, edge}, false),
                              std::span<const double>(platform.calibration));
    }
    if (described.type == 3 && !described.polynomial.empty())
        schema::write_numbers(group, attribute::pressure_polynomial, described.polynomial);

    auto channels = group.create_group(schema::name::platform_channels);
    const auto names = schema::channel_names(described.type);
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (!channels.create_hard_link_internal(names[i], &platform.channels[i]))
            throw std::runtime_error(fmt::format("the channel {} cannot be linked", names[i]));
    }
}

void evaluate_unit(strata::data_group& target, const anvil::json& parameters) {
    using schema::text_parameter;
    constexpr auto* id = forceplate_detect::id;
    const auto analogs = text_parameter(parameters, id, argument::source_group);
    const auto metadata_path = text_parameter(parameters, id, argument::metadata_source_group);
    const auto destination = text_parameter(parameters, id, argument::destination_group);
    const auto index = schema::integer_parameter(parameters, id, argument::platform_index);
    if (!target.exists_group(metadata_path))
        throw std::runtime_error(fmt::format("there is no group '{}'", metadata_path));
    const auto metadata = target.retrieve_group(metadata_path);

    const schema::force_platform_table table(metadata);
    if (index < 0 || static_cast<std::size_t>(index) >= table.count()) {
        throw std::runtime_error(
            fmt::format("the index is {}, the file has {} platforms", index, table.count()));
    }
    schema::warnings notes;
    const auto platform = detect(table.platform(static_cast<std::size_t>(index)),
                                 schema::pair_analogs(target, analogs), notes);
    if (target.exists_group(destination))
        target.delete_group(destination);
    write_group(target.create_group(destination), platform);
    notes.log(destination);
}

} // namespace

anvil::status forceplate_detect::evaluate(strata::data_group& target,
                                          const anvil::json& parameters) const {
    return strata::status_of([&] { evaluate_unit(target, parameters); });
}

} // namespace c3d
