#include "plugins/c3d/events/events_detect.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include <strata/data_set.hpp>
#include <strata/plugin/status_of.hpp>

#include "plugins/c3d/events/event_grouping.hpp"
#include "schema/event_types.hpp"
#include "schema/names.hpp"
#include "schema/unit_parameters.hpp"
#include "schema/write_attribute.hpp"

namespace c3d {

namespace {

namespace attribute = schema::attribute;

std::string type_of(const event_occurrence& event) {
    return schema::event_type(event.has_icon ? event.icon : -1, event.label);
}

template <typename Value, typename Member>
std::vector<Value> column(const event_set& set, Member event_occurrence::* member) {
    std::vector<Value> values;
    values.reserve(set.occurrences.size());
    for (const auto& event : set.occurrences)
        values.push_back(event.*member);
    return values;
}

void create_event_set(strata::data_group& events, const event_set& content) {
    if (events.exists_set(content.name))
        events.delete_set(content.name);
    const auto times = column<float>(content, &event_occurrence::time_s);
    const strata::data_shape shape({static_cast<std::int64_t>(times.size())}, false);
    auto set = events.create_set(content.name, shape, strata::data_type::float32);
    if (!set.select(shape, false).write_value(times.data(), strata::data_type::float32)) {
        throw std::runtime_error(
            fmt::format("the times of the event '{}' were refused", content.name));
    }
    const auto icons = column<std::int32_t>(content, &event_occurrence::icon);
    const auto& first = content.occurrences.front();
    schema::write_text(set, attribute::event_context, first.context);
    schema::write_numbers(set, attribute::event_icons, std::vector<std::int32_t>{icons.front()});
    schema::write_text(set, attribute::event_subject, first.subject);
    schema::write_text(set, attribute::event_description, first.description);
    schema::write_text(set, attribute::event_type, type_of(first));
    schema::write_texts(set, attribute::occurrence_contexts,
                        column<std::string>(content, &event_occurrence::context));
    schema::write_texts(set, attribute::occurrence_labels,
                        column<std::string>(content, &event_occurrence::label));
    schema::write_texts(set, attribute::occurrence_subjects,
                        column<std::string>(content, &event_occurrence::subject));
    schema::write_texts(set, attribute::occurrence_descriptions,
                        column<std::string>(content, &event_occurrence::description));
    schema::write_numbers(set, attribute::occurrence_icons, icons);
    schema::write_numbers(set, attribute::occurrence_flags,
                          column<std::int32_t>(content, &event_occurrence::flags));
}

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
    const auto source = schema::text_parameter(parameters, events_detect::id, "SourceGroup");
    const auto destination =
        schema::text_parameter(parameters, events_detect::id, "DestinationGroup");
    const auto separator = schema::text_parameter(parameters, events_detect::id, "PartSeparator");
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
