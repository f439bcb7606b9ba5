#include "schema/event_sets.hpp"

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <utility>

#include <fmt/format.h>

#include <strata/data_shape.hpp>
#include <strata/data_type.hpp>

#include "schema/names.hpp"
#include "schema/read_attribute.hpp"
#include "schema/write_attribute.hpp"

namespace schema {

namespace {

std::optional<std::vector<float>> times_of(const strata::data_set& set) {
    const auto shape = set.shape(false);
    std::vector<float> times(static_cast<std::size_t>(shape.element_count()));
    if (!times.empty() &&
        !set.select(shape, false).read_value(times.data(), strata::data_type::float32))
        return std::nullopt;
    return times;
}

/// A label for a set that keeps none: its name without the context.
std::string label_in_name(const std::string& name, std::string_view context) {
    return name.starts_with(context) ? name.substr(context.size()) : name;
}

/// Texts with an element for each occurrence.
std::vector<std::string> texts_of_occurrences(const strata::data_set& set, const char* name,
                                              std::size_t count, const std::string& otherwise) {
    auto texts = read_texts(set.retrieve_attribute(name));
    texts.resize(count, otherwise);
    return texts;
}

std::vector<std::int32_t> numbers_of_occurrences(const strata::data_set& set, const char* name,
                                                 std::size_t count, std::int32_t otherwise) {
    auto numbers = read_numbers<std::int32_t>(set.retrieve_attribute(name));
    numbers.resize(count, otherwise);
    return numbers;
}

template <typename Value>
std::vector<Value> each_of(std::span<const event_occurrence> occurrences,
                           Value event_occurrence::* member) {
    std::vector<Value> values;
    values.reserve(occurrences.size());
    for (const auto& occurrence : occurrences)
        values.push_back(occurrence.*member);
    return values;
}

void delete_attributes(strata::data_set& set, std::initializer_list<const char*> names) {
    for (const char* name : names) {
        if (set.exists_attribute(name))
            set.delete_attribute(name);
    }
}

std::string without(std::string text, std::string_view part) {
    if (part.empty())
        return text;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at))
        text.erase(at, part.size());
    return text;
}

} // namespace

std::optional<std::vector<event_occurrence>> read_occurrences(const strata::data_set& set) {
    const auto times = times_of(set);
    if (!times)
        return std::nullopt;
    const auto count = times->size();
    const auto context = read_text(set.retrieve_attribute(attribute::event_context));
    const auto description = read_text(set.retrieve_attribute(attribute::event_description));
    const auto icon =
        read_number<std::int32_t>(set.retrieve_attribute(attribute::event_icons)).value_or(0);
    auto contexts = texts_of_occurrences(set, attribute::occurrence_contexts, count, context);
    auto labels = texts_of_occurrences(set, attribute::occurrence_labels, count,
                                       label_in_name(set.name(), context));
    auto subjects =
        texts_of_occurrences(set, attribute::occurrence_subjects, count,
                             read_text(set.retrieve_attribute(attribute::event_subject)));
    auto descriptions =
        texts_of_occurrences(set, attribute::occurrence_descriptions, count, description);
    const auto icons = numbers_of_occurrences(set, attribute::occurrence_icons, count, icon);
    const auto flags = numbers_of_occurrences(set, attribute::occurrence_flags, count, 0);
    // A reader takes the set's description from the first occurrence.
    if (!descriptions.empty() && descriptions.front().empty())
        descriptions.front() = description;

    std::vector<event_occurrence> occurrences;
    occurrences.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        occurrences.push_back({std::move(contexts[i]), std::move(labels[i]), std::move(subjects[i]),
                               std::move(descriptions[i]), (*times)[i], icons[i], flags[i]});
    }
    return occurrences;
}

void write_occurrences(strata::data_set& set, std::span<const event_occurrence> occurrences) {
    delete_attributes(set, {attribute::occurrence_contexts, attribute::occurrence_labels,
                            attribute::occurrence_subjects, attribute::occurrence_descriptions,
                            attribute::occurrence_icons, attribute::occurrence_flags});
    write_texts(set, attribute::occurrence_contexts,
                each_of(occurrences, &event_occurrence::context));
    write_texts(set, attribute::occurrence_labels, each_of(occurrences, &event_occurrence::label));
    write_texts(set, attribute::occurrence_subjects,
                each_of(occurrences, &event_occurrence::subject));
    write_texts(set, attribute::occurrence_descriptions,
                each_of(occurrences, &event_occurrence::description));
    write_numbers(set, attribute::occurrence_icons, each_of(occurrences, &event_occurrence::icon));
    write_numbers(set, attribute::occurrence_flags, each_of(occurrences, &event_occurrence::flags));
}

void write_event(strata::data_set& set, const event_occurrence& first, const std::string& type) {
    delete_attributes(set,
                      {attribute::event_context, attribute::event_icons, attribute::event_subject,
                       attribute::event_description, attribute::event_type});
    write_text(set, attribute::event_context, first.context);
    write_numbers(set, attribute::event_icons, std::vector{first.icon});
    write_text(set, attribute::event_subject, first.subject);
    write_text(set, attribute::event_description, first.description);
    write_text(set, attribute::event_type, type);
}

std::string event_set_name(const std::string& context, const std::string& label,
                           std::string_view separator) {
    auto name = without(fmt::format("{}{}{}", context, separator, label), separator);
    name = without(without(std::move(name), "/"), "\\");
    return name.empty() ? "Event" : name;
}

std::string numbered_event_set(const std::string& name, std::size_t number) {
    return number == 1 ? name : fmt::format("{} {}", name, number);
}

} // namespace schema
