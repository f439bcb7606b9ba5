#include "acquisition/platforms/platform_detection.hpp"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <new>
#include <string>
#include <string_view>

#include <fmt/format.h>
#include <strata/access/same_set.hpp>
#include <strata/callable_builder.hpp>

#include "acquisition/platforms/platform_remarks.hpp"
#include "schema/computations.hpp"
#include "schema/names.hpp"
#include "schema/platform_obstacles.hpp"
#include "schema/read_attribute.hpp"
#include "schema/write_attribute.hpp"
#include "store/path_helpers.hpp"
#include "store/store_log.hpp"
#include "store/typed_access.hpp"

namespace mox {

namespace argument = schema::argument;

namespace attribute = schema::attribute;

namespace {

/// The parameters that detection depends on, as numbers: two acquisitions' are the same where
/// nothing that matters differs.
std::vector<double> parameters_of(const strata::data_group& root) {
    namespace parameters = schema::parameter;
    std::vector<double> numbers;
    const auto group = root.retrieve_group(schema::metadata_force_platform);
    for (const auto* name :
         {parameters::used, parameters::type, parameters::corners, parameters::origin,
          parameters::channel, parameters::calibration, parameters::pressure_polynomial}) {
        const auto parameter = group.retrieve_attribute(name);
        // What holds none is told of when the groups are made.
        const auto values = schema::holds_numbers(parameter)
                                ? schema::read_numbers<double>(parameter)
                                : std::vector<double>();
        const auto extents =
            parameter ? parameter.shape().dimensions() : std::vector<std::int64_t>();
        numbers.push_back(parameter ? 1.0 : 0.0);
        numbers.push_back(static_cast<double>(extents.size()));
        for (const auto extent : extents)
            numbers.push_back(static_cast<double>(extent));
        numbers.push_back(static_cast<double>(values.size()));
        numbers.insert(numbers.end(), values.begin(), values.end());
    }
    return numbers;
}

/// Bit by bit: a NaN equals itself.
bool are_same(const std::vector<double>& left, const std::vector<double>& right) {
    if (left.size() != right.size())
        return false;
    for (std::size_t i = 0; i < left.size(); ++i) {
        if (std::bit_cast<std::uint64_t>(left[i]) != std::bit_cast<std::uint64_t>(right[i]))
            return false;
    }
    return true;
}

/// The group of all platforms, without those that other parameters made.
strata::data_group platforms_group(const strata::data_group& root,
                                   const schema::force_platform_table& table) {
    auto group = retrieve_or_create_group(root, schema::force_plates);
    const auto parameters = parameters_of(root);
    const auto kept = group.retrieve_attribute(attribute::detected_from);
    if (kept && are_same(schema::read_numbers<double>(kept), parameters))
        return group;
    for (const auto& name : group.list_group_children_name())
        group.delete_group(name);
    if (kept)
        group.delete_attribute(attribute::detected_from);
    for (std::size_t i = 0; i < table.unreadable().size(); ++i)
        log_store_failure(store_failure::read_attribute);
    schema::write_numbers(group, attribute::detected_from, parameters);
    return group;
}

/// True when the group refers to the very sets that the platform has.
bool refers_to(const strata::data_group& group, const std::vector<strata::data_set>& channels) {
    if (!group.exists_group(schema::name::platform_channels))
        return false;
    const auto links = sets_of(group.retrieve_group(schema::name::platform_channels));
    if (links.size() != channels.size())
        return false;
    for (std::size_t i = 0; i < links.size(); ++i) {
        if (!strata::same_set(links[i], channels[i]))
            return false;
    }
    return true;
}

/// Why the platform has no group now; empty when it has one.
std::string detect(strata::data_group root, std::size_t index, const std::string& path) {
    const auto status = strata::callable_builder().evaluate(
        root, {{"callable_unit", schema::computation::detect_platform},
               {argument::source_group, schema::analogs_export},
               {argument::metadata_source_group, ""},
               {argument::destination_group, path},
               {argument::platform_index, static_cast<std::int64_t>(index)}});
    if (status.is_out_of_memory())
        throw std::bad_alloc();
    return status ? std::string() : status.message(", ");
}

} // namespace

void detect_platforms(const strata::data_group& root, const schema::force_platform_table& table,
                      const std::vector<strata::data_set>& columns,
                      std::vector<platform_state>& platforms) {
    auto group = platforms_group(root, table);
    std::vector<std::string> failures;
    for (std::size_t i = 0; i < platforms.size(); ++i) {
        auto& platform = platforms[i];
        const auto name = fmt::format("FP{}", i);
        if (group.exists_group(name) && !refers_to(group.retrieve_group(name), platform.channels))
            group.delete_group(name);
        if (!group.exists_group(name)) {
            // Asked here, too: the unit reads all parameters anew for each platform.
            auto reason = schema::obstacle_of(platform.described, columns);
            if (reason.empty())
                reason = detect(root, i, fmt::format("{}/{}", schema::force_plates, name));
            if (!reason.empty()) {
                failures.push_back(
                    fmt::format("Force platform {} has no wrench : {}", i + 1, reason));
                continue;
            }
            write_or_create(group.retrieve_group(name), attribute::devices_index,
                            static_cast<std::int32_t>(i));
        }
        platform.group = group.retrieve_group(name);
    }
    log_news(group, attribute::undetected, failures);
    log_news(group, attribute::remarks_told, remarks_on(root, table, platforms));
}

} // namespace mox
