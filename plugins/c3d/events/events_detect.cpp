#include "plugins/c3d/events/events_detect.hpp"

#include <optional>
#include <string>
#include <vector>

#include <fmt/format.h>

#include <strata/plugin/status_of.hpp>

#include "plugins/c3d/events/event_grouping.hpp"
#include "plugins/c3d/events/event_sets.hpp"
#include "plugins/c3d/events/read_events.hpp"
#include "schema/computations.hpp"
#include "schema/names.hpp"
#include "schema/unit_parameters.hpp"

namespace c3d {

namespace argument = schema::argument;

namespace {

/// The group at `path` of a file's tree, wherever `source` begins; nothing when there is none.
std::optional<strata::data_group> find_group(const strata::data_group& root,
                                             const std::string& source, const char* path) {
    for (const auto& format : {fmt::format("{}/{}", source, schema::format), source}) {
        const auto full_path = fmt::format("{}/{}", format, path);
        if (root.exists_group(full_path))
            return root.retrieve_group(full_path);
    }
    return std::nullopt;
}

void detect(strata::data_group& target, const anvil::json& parameters) {
    const auto source =
        schema::text_parameter(parameters, events_detect::id, argument::source_group);
    const auto destination =
        schema::text_parameter(parameters, events_detect::id, argument::destination_group);
    const auto separator =
        schema::text_parameter(parameters, events_detect::id, argument::part_separator);
    std::vector<event_occurrence> from_group;
    if (const auto group = find_group(target, source, schema::below_format::metadata_event))
        from_group = group_events(*group);
    std::vector<event_occurrence> from_header;
    if (const auto group = find_group(target, source, schema::name::header))
        from_header = header_events(*group);

    const auto sets = grouped_events(from_group, from_header, separator);
    auto events = schema::reach_group(target, destination);
    for (const auto& set : sets)
        create_event_set(events, set);
}

} // namespace

anvil::status events_detect::evaluate(strata::data_group& target,
                                      const anvil::json& parameters) const {
    return strata::status_of([&] { detect(target, parameters); });
}

} // namespace c3d
