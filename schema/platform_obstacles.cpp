#include "schema/platform_obstacles.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include <fmt/format.h>

#include "schema/plate_frame.hpp"

namespace schema {

namespace {

constexpr std::array<const char*, 6> names_of_type_1 = {"Fx", "Fy", "Fz", "Px", "Py", "Mz"};
constexpr std::array<const char*, 6> names_of_type_2 = {"Fx", "Fy", "Fz", "Mx", "My", "Mz"};
constexpr std::array<const char*, 8> names_of_type_3 = {"Fx12", "Fx34", "Fy14", "Fy23",
                                                        "Fz1",  "Fz2",  "Fz3",  "Fz4"};
constexpr std::array<const char*, 6> names_of_type_4 = {"Output1", "Output2", "Output3",
                                                        "Output4", "Output5", "Output6"};

std::string missing_channel(const force_platform& platform,
                            const std::vector<strata::data_set>& columns) {
    const auto names = channel_names(platform.type);
    for (std::size_t i = 0; i < names.size(); ++i) {
        const auto number = i < platform.channels.size() ? platform.channels[i] : 0;
        const auto index = static_cast<std::size_t>(number) - 1; // huge for 0
        if (index >= columns.size() || !columns[index]) {
            return fmt::format("FORCE_PLATFORM:CHANNEL names the analog channel {} as its {}, "
                               "which is not there",
                               number, names[i]);
        }
    }
    return {};
}

} // namespace

std::span<const char* const> channel_names(std::int64_t type) {
    switch (type) {
    case 1:
        return names_of_type_1;
    case 2:
        return names_of_type_2;
    case 3:
        return names_of_type_3;
    case 4:
        return names_of_type_4;
    default:
        return {};
    }
}

std::string obstacle_of(const force_platform& platform,
                        const std::vector<strata::data_set>& columns) {
    if (channels_of_type(platform.type) == 0)
        return fmt::format("the channels of type {} are not known", platform.type);
    if (!platform.corners || !frame_of_corners(*platform.corners))
        return "FORCE_PLATFORM:CORNERS span no plane for it";
    const auto is_number = [](double value) { return std::isfinite(value); };
    // The channels of type 1 measure at the surface.
    if (platform.type != 1 &&
        (!platform.origin || !std::ranges::all_of(*platform.origin, is_number)))
        return "FORCE_PLATFORM:ORIGIN has no three numbers for it";
    return missing_channel(platform, columns);
}

} // namespace schema
