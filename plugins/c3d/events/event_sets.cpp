#include "plugins/c3d/events/event_sets.hpp"

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include <fmt/format.h>

#include <strata/data_set.hpp>
#include <strata/data_type.hpp>

#include "plugins/c3d/bytes/export_error.hpp"
#include "plugins/c3d/parameters/set_attributes.hpp"
#include "schema/event_types.hpp"
#include "schema/names.hpp"
#include "schema/read_attribute.hpp"
#include "schema/write_attribute.hpp"

namespace c3d {

namespace {

namespace attribute = schema::attribute;

std::vector<float> times_of(const strata::data_set& set) {
    const auto shape = set.shape(false);
    std::vector<float> times(static_cast<std::size_t>(shape.element_count()));
    if (!times.empty() &&
        !set.select(shape, false).read_value(times.data(), strata::data_type::float32)) {
        throw export_error("the times of the event '{}' cannot be read", set.name());
    }
    return times;
}

/// A label for a set that keeps none: its name without the context.
std::string label_in_name(const std::string& name, std::string_view context) {
    return name.starts_with(context) ? name.substr(context.size()) : name;
}

/// Texts with an element for each occurrence.
std::vector<std::string> texts_of_occurrences(const strata::data_set& set, const char* name,
                                              std::size_t count, const std::string& otherwise) {
    auto texts = schema::read_texts(set.retrieve_attribute(name));
    texts.resize(count, otherwise);
    return texts;
}

std::vector<std::int32_t> numbers_of_occurrences(const strata::data_set& set, const char* name,
                                                 std::size_t count, std::int32_t otherwise) {
    auto numbers = schema::read_numbers<std::int32_t>(set.retrieve_attribute(name));
    numbers.resize(count, otherwise);
    return numbers;
}

event_set read_event_set(const strata::data_set& set) {
    const auto times = times_of(set);
    const auto count = times.size();
    const auto context = text_of(set, attribute::event_context);
    const auto description = text_of(set, attribute::event_description);
    const auto icon =
        schema::read_number<std::int32_t>(set.retrieve_attribute(attribute::event_icons))
            .value_or(0);
    const auto contexts = texts_of_occurrences(set, attribute::occurrence_contexts, count, context);
    const auto labels = texts_of_occurrences(set, attribute::occurrence_labels, count,
                                             label_in_name(set.name(), context));
    const auto subjects = texts_of_occurrences(set, attribute::occurrence_subjects, count,
                                               text_of(set, attribute::event_subject));
    auto descriptions =
        texts_of_occurrences(set, attribute::occurrence_descriptions, count, description);
    const auto icons = numbers_of_occurrences(set, attribute::occurrence_icons, count, icon);
    const auto flags = numbers_of_occurrences(set, attribute::occurrence_flags, count, 0);
    // A reader takes the set's description from the first occurrence.
    if (!descriptions.empty() && descriptions.front().empty())
        descriptions.front() = description;

    event_set result{set.name(), {}};
    for (std::size_t i = 0; i < count; ++i) {
        result.occurrences.push_back({contexts[i], labels[i], subjects[i],
                                      std::move(descriptions[i]), times[i], icons[i], flags[i]});
    }
    return result;
}

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

} // namespace

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

std::vector<event_set> read_event_sets(const strata::data_group& events) {
    std::vector<event_set> sets;
    for (const auto& name : events.list_set_children_name())
        sets.push_back(read_event_set(events.retrieve_set(name)));
    std::erase_if(sets, [](const auto& set) { return set.occurrences.empty(); });
    return sets;
}

} // namespace c3d
