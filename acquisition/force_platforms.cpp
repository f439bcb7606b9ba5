#include "acquisition/force_platforms.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include <fmt/format.h>
#include <strata/callable_builder.hpp>

#include "acquisition/layout.hpp"
#include "acquisition/platform_detection.hpp"
#include "layout/analog_pairing.hpp"
#include "store/path_helpers.hpp"
#include "store/store_log.hpp"
#include "store/typed_access.hpp"

namespace mox {

namespace attribute = layout::attribute;

namespace {

/// One of the four wrenches of a platform.
struct wrench_kind {
    const char* location;
    bool in_laboratory;
    const char* set_name;
};

constexpr std::array<wrench_kind, 4> wrench_kinds = {{
    {"hardware-origin", true, layout::name::wrench_at_origin},
    {"hardware-origin", false, "W_HO^LCS"},
    {"point-of-application", true, layout::name::wrench_at_point},
    {"point-of-application", false, "W_POA^LCS"},
}};

std::vector<platform_state> platforms_of(const strata::data_group& root,
                                         const std::vector<strata::data_set>& columns) {
    std::vector<platform_state> platforms;
    for (auto& described : acquisition_layout::read_force_platforms(root)) {
        platform_state platform{std::move(described), {}, std::nullopt};
        for (const auto number : platform.described.channels) {
            const auto index = static_cast<std::size_t>(number) - 1; // huge for the unused 0
            if (index < columns.size() && columns[index])
                platform.channels.push_back(columns[index]);
        }
        platforms.push_back(std::move(platform));
    }
    return platforms;
}

/// Sets of the analog channels in the order that they are exported in.
std::vector<strata::data_set> in_export_order(const strata::data_group& analogs,
                                              const std::vector<strata::data_set>& columns) {
    std::vector<strata::data_set> ordered;
    std::unordered_set<std::string> taken;
    for (const auto& set : columns) {
        if (set && taken.insert(set.name()).second)
            ordered.push_back(set);
    }
    for (auto& set : acquisition_layout::sets_by_index(analogs)) {
        if (!taken.contains(set.name()))
            ordered.push_back(std::move(set));
    }
    return ordered;
}

std::unordered_map<std::string, std::int32_t>
platform_by_set(const std::vector<platform_state>& platforms) {
    std::unordered_map<std::string, std::int32_t> users;
    std::int32_t index = 0;
    for (const auto& platform : platforms) {
        for (const auto& set : platform.channels)
            users.emplace(set.name(), index);
        ++index;
    }
    return users;
}

void number_channels(const strata::data_group& analogs,
                     const std::vector<strata::data_set>& columns,
                     const std::vector<platform_state>& platforms) {
    const auto users = platform_by_set(platforms);
    std::int32_t index = 0;
    for (auto set : in_export_order(analogs, columns)) {
        write_or_create(set, attribute::relative_set_index, index++);
        if (!set.exists_attribute(attribute::sample_rate)) {
            write_or_create(set, attribute::sample_rate,
                            read<double>(analogs.retrieve_attribute(attribute::sample_rate)));
        }
        if (const auto user = users.find(set.name()); user != users.end())
            write_or_create(set, attribute::devices_index, user->second);
        else if (set.exists_attribute(attribute::devices_index))
            set.delete_attribute(attribute::devices_index);
    }
}

void compute_wrench(strata::data_group root, strata::data_group platform, const wrench_kind& kind,
                    double fz_threshold) {
    const auto path = fmt::format("{}/{}", layout::force_plates, platform.name());
    // The unit takes the sets of the platform's own axes from the platforms' group on.
    const auto& holder = kind.in_laboratory ? path : platform.name();
    const auto status = strata::callable_builder().evaluate(
        root, {{"callable_unit", "classical-mechanics.ground-reaction-wrench"},
               {"SourceGroup", path},
               {"DestinationGroup", fmt::format("{}/{}", holder, kind.set_name)},
               {"FzThreshold", fz_threshold},
               {"GlobalTransformation", kind.in_laboratory},
               {"Location", kind.location}});
    if (status)
        return;
    log_store_failure(status.message(", "));
    if (platform.exists_set(kind.set_name)) // of an earlier call, when it could be computed
        platform.delete_set(kind.set_name);
}

void compute_wrenches(const strata::data_group& root, const strata::data_group& platform,
                      double fz_threshold) {
    for (const auto& kind : wrench_kinds)
        compute_wrench(root, platform, kind, fz_threshold);
}

} // namespace

std::vector<platform_state> bring_platforms_up_to_date(strata::data_group root,
                                                       double fz_threshold) {
    if (!root.exists_group(acquisition_layout::force_platform_path))
        return {};
    const auto columns = acquisition_layout::pair_analogs(root);
    auto platforms = platforms_of(root, columns);
    detect_platforms(root, platforms);
    if (root.exists_group(layout::analogs_export))
        number_channels(root.retrieve_group(layout::analogs_export), columns, platforms);
    for (const auto& platform : platforms) {
        if (platform.group)
            compute_wrenches(root, *platform.group, fz_threshold);
    }
    return platforms;
}

} // namespace mox
