#include "acquisition/platforms/force_platforms.hpp"

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>

#include "acquisition/platforms/platform_detection.hpp"
#include "schema/analog_pairing.hpp"
#include "schema/names.hpp"
#include "store/path_helpers.hpp"
#include "store/typed_access.hpp"

namespace mox {

namespace attribute = schema::attribute;

namespace {

std::vector<platform_state> platforms_of(const schema::force_platform_table& table,
                                         const std::vector<strata::data_set>& columns) {
    std::vector<platform_state> platforms;
    platforms.reserve(table.count());
    for (std::size_t i = 0; i < table.count(); ++i) {
        platform_state platform{table.platform(i), {}, std::nullopt};
        platform.channels = channels_by_place(platform.described, columns);
        std::erase_if(platform.channels, [](const strata::data_set& set) { return !set; });
        platforms.push_back(std::move(platform));
    }
    return platforms;
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

void forget_platform(strata::data_set set) {
    if (set.exists_attribute(attribute::devices_index))
        set.delete_attribute(attribute::devices_index);
}

void number_channels(const strata::data_group& analogs,
                     const std::vector<strata::data_set>& columns,
                     const std::vector<platform_state>& platforms) {
    const auto users = platform_by_set(platforms);
    std::int32_t index = 0;
    for (const auto& set : columns) { // of all channels: those without a column are behind
        if (!set)
            continue;
        write_or_create(set, attribute::relative_set_index, index++);
        if (!set.exists_attribute(attribute::sample_rate)) {
            write_or_create(set, attribute::sample_rate,
                            read<double>(analogs.retrieve_attribute(attribute::sample_rate)));
        }
        if (const auto user = users.find(set.name()); user != users.end())
            write_or_create(set, attribute::devices_index, user->second);
        else
            forget_platform(set);
    }
}

/// Takes away what was there for platforms.
void forget_platforms(strata::data_group root) {
    if (!root.exists_group(schema::force_plates))
        return;
    root.delete_group(schema::force_plates);
    if (!root.exists_group(schema::analogs_export))
        return;
    for (const auto& set : sets_of(root.retrieve_group(schema::analogs_export)))
        forget_platform(set);
}

} // namespace

std::vector<platform_state> bring_platforms_up_to_date(strata::data_group root) {
    if (!root.exists_group(schema::metadata_force_platform)) {
        forget_platforms(root);
        return {};
    }
    const auto columns = schema::pair_analogs(root);
    const schema::force_platform_table table(root);
    auto platforms = platforms_of(table, columns);
    detect_platforms(root, table, columns, platforms);
    if (root.exists_group(schema::analogs_export))
        number_channels(root.retrieve_group(schema::analogs_export), columns, platforms);
    return platforms;
}

std::vector<platform_state> describe_platforms(const strata::data_group& root) {
    if (!root.exists_group(schema::metadata_force_platform))
        return {};
    return platforms_of(schema::force_platform_table(root), schema::pair_analogs(root));
}

std::vector<strata::data_set> channels_by_place(const schema::force_platform& platform,
                                                const std::vector<strata::data_set>& columns) {
    std::vector<strata::data_set> channels;
    channels.reserve(platform.channels.size());
    for (const auto number : platform.channels) {
        const auto index = static_cast<std::size_t>(number) - 1; // huge for the unused 0
        channels.push_back(index < columns.size() ? columns[index] : strata::data_set());
    }
    return channels;
}

} // namespace mox
