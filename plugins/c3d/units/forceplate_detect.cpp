#include "plugins/c3d/units/forceplate_detect.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

#include <fmt/format.h>

#include <strata/data_set.hpp>

#include "layout/analog_pairing.hpp"
#include "layout/force_platform_table.hpp"
#include "layout/plate_frame.hpp"
#include "layout/unit_parameters.hpp"
#include "plugins/c3d/attributes/write_attribute.hpp"
#include "plugins/c3d/file/warnings.hpp"

namespace c3d {

namespace {

using acquisition_layout::channels_of_type;
using acquisition_layout::force_platform;
using acquisition_layout::vector3;

constexpr std::size_t matrix_edge = 6;

constexpr std::array<const char*, 6> names_of_type_1 = {"Fx", "Fy", "Fz", "Px", "Py", "Mz"};
constexpr std::array<const char*, 6> names_of_type_2 = {"Fx", "Fy", "Fz", "Mx", "My", "Mz"};
constexpr std::array<const char*, 8> names_of_type_3 = {"Fx12", "Fx34", "Fy14", "Fy23",
                                                        "Fz1",  "Fz2",  "Fz3",  "Fz4"};
constexpr std::array<const char*, 6> names_of_type_4 = {"Output1", "Output2", "Output3",
                                                        "Output4", "Output5", "Output6"};

std::span<const char* const> channel_names(std::int64_t type) {
    switch (type) {
    case 1:
        return names_of_type_1;
    case 3:
        return names_of_type_3;
    case 4:
        return names_of_type_4;
    default:
        return names_of_type_2;
    }
}

force_platform platform_at(const strata::data_group& metadata, std::int64_t index) {
    auto platforms = acquisition_layout::read_force_platforms(metadata);
    if (index < 0 || static_cast<std::size_t>(index) >= platforms.size()) {
        throw std::runtime_error(
            fmt::format("the index is {}, the file has {} platforms", index, platforms.size()));
    }
    return std::move(platforms[static_cast<std::size_t>(index)]);
}

vector3 repaired_origin(const force_platform& platform, warnings& notes) {
    const auto is_number = [](double value) { return std::isfinite(value); };
    auto origin = platform.origin.value_or(vector3{});
    if (platform.type == 1) {
        origin[0] = origin[1] = 0.0; // its channels measure at the surface
        origin[2] = is_number(origin[2]) ? -std::abs(origin[2]) : 0.0;
        return origin;
    }
    if (!platform.origin || !std::ranges::all_of(origin, is_number))
        throw std::runtime_error("FORCE_PLATFORM:ORIGIN has no three numbers for it");
    if (platform.type == 3) {
        // The first two are distances: negated with the third they would turn the moments round.
        const vector3 repaired = {std::abs(origin[0]), std::abs(origin[1]), -std::abs(origin[2])};
        if (repaired != origin)
            notes.add("FORCE_PLATFORM:ORIGIN is read with positive x and y and negative z");
        return repaired;
    }
    if (origin[2] > 0.0) {
        // Certificates give the vector from the surface down to the measuring origin.
        notes.add("FORCE_PLATFORM:ORIGIN has a positive z; read with the opposite sign");
        return {-origin[0], -origin[1], -origin[2]};
    }
    return origin;
}

std::vector<double> calibration_of(const force_platform& platform, warnings& notes) {
    const auto& matrix = platform.calibration;
    if (matrix.size >= matrix_edge)
        return matrix.elements;
    notes.add("FORCE_PLATFORM:CAL_MATRIX is missing; the channels are taken as they are");
    std::vector<double> identity(matrix_edge * matrix_edge, 0.0);
    for (std::size_t i = 0; i < matrix_edge; ++i)
        identity[i * matrix_edge + i] = 1.0;
    return identity;
}

std::vector<strata::data_set> channels_of(const force_platform& platform,
                                          const std::vector<strata::data_set>& columns,
                                          warnings& notes) {
    const auto names = channel_names(platform.type);
    std::vector<strata::data_set> channels;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const auto number = i < platform.channels.size() ? platform.channels[i] : 0;
        if (number < 1 || static_cast<std::size_t>(number) > columns.size() ||
            !columns[static_cast<std::size_t>(number) - 1]) {
            throw std::runtime_error(
                fmt::format("FORCE_PLATFORM:CHANNEL names the analog channel {} as its {}, which "
                            "is not there",
                            number, names[i]));
        }
        if (std::ranges::count(platform.channels, number) > 1)
            notes.add("FORCE_PLATFORM:CHANNEL names the analog channel {} repeatedly", number);
        channels.push_back(columns[static_cast<std::size_t>(number) - 1]);
    }
    return channels;
}

/// What goes into the group, complete before anything is changed.
struct detected_platform {
    force_platform described;
    acquisition_layout::plate_corners corners{};
    vector3 origin{};
    std::vector<double> calibration; ///< of type 4
    std::vector<strata::data_set> channels;
};

detected_platform detect(const force_platform& described,
                         const std::vector<strata::data_set>& columns, warnings& notes) {
    if (channels_of_type(described.type) == 0)
        throw std::runtime_error(
            fmt::format("the channels of type {} are not known", described.type));
    if (!described.corners || !acquisition_layout::frame_of_corners(*described.corners))
        throw std::runtime_error("FORCE_PLATFORM:CORNERS span no plane for it");
    detected_platform platform{
        described, *described.corners, repaired_origin(described, notes), {}, {}};
    platform.channels = channels_of(described, columns, notes);
    if (described.type == 4)
        platform.calibration = calibration_of(described, notes);
    return platform;
}

void write_group(strata::data_group group, const detected_platform& platform) {
    const auto& described = platform.described;
    write_number(group, "Type", static_cast<std::int32_t>(described.type));
    std::vector<double> corners;
    for (const auto& corner : platform.corners)
        corners.insert(corners.end(), corner.begin(), corner.end());
    write_numbers(group, "Corners", strata::data_shape({4, 3}, false),
                  std::span<const double>(corners));
    write_numbers(group, "Origin",
                  std::vector<double>(platform.origin.begin(), platform.origin.end()));
    if (described.type == 4) {
        constexpr auto edge = static_cast<std::int64_t>(matrix_edge);
        write_numbers(group, "CalibrationMatrix", strata::data_shape({edge, edge}, false),
                      std::span<const double>(platform.calibration));
    }
    if (described.type == 3 && !described.polynomial.empty())
        write_numbers(group, "CenterOfPressurePolynomial", described.polynomial);

    auto channels = group.create_group("Channels");
    const auto names = channel_names(described.type);
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (!channels.create_hard_link_internal(names[i], &platform.channels[i]))
            throw std::runtime_error(fmt::format("the channel {} cannot be linked", names[i]));
    }
}

void evaluate_unit(strata::data_group& target, const anvil::json& parameters) {
    using acquisition_layout::text_parameter;
    constexpr auto* id = forceplate_detect::id;
    const auto analogs = text_parameter(parameters, id, "SourceGroup");
    const auto metadata_path = text_parameter(parameters, id, "MetadataSourceGroup");
    const auto destination = text_parameter(parameters, id, "DestinationGroup");
    const auto index = acquisition_layout::integer_parameter(parameters, id, "ForceplateIndex");
    if (!target.exists_group(metadata_path))
        throw std::runtime_error(fmt::format("there is no group '{}'", metadata_path));
    const auto metadata = target.retrieve_group(metadata_path);

    warnings notes;
    const auto platform = detect(platform_at(metadata, index),
                                 acquisition_layout::pair_analogs(target, analogs), notes);
    if (target.exists_group(destination))
        target.delete_group(destination);
    write_group(target.create_group(destination), platform);
    notes.log(destination);
}

} // namespace

anvil::status forceplate_detect::evaluate(strata::data_group& target,
                                          const anvil::json& parameters) const {
    try {
        evaluate_unit(target, parameters);
        return {};
    } catch (const std::exception& error) {
        return anvil::status::failure(error.what());
    }
}

} // namespace c3d
