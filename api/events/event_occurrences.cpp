#include "api/events/event_occurrences.hpp"

#include <algorithm>
#include <array>
#include <vector>

#include <strata/access/append_elements.hpp>
#include <strata/access/data_type_of.hpp>

#include "schema/event_types.hpp"
#include "schema/names.hpp"
#include "store/append_element.hpp"
#include "store/swig_error.hpp"
#include "store/typed_access.hpp"

namespace mox::events {

namespace attribute = schema::attribute;

namespace {

constexpr std::array texts_of_occurrences{
    attribute::occurrence_contexts, attribute::occurrence_labels, attribute::occurrence_subjects,
    attribute::occurrence_descriptions};
constexpr std::array numbers_of_occurrences{attribute::occurrence_icons,
                                            attribute::occurrence_flags};

std::int32_t icon_of(int id) { return id == -1 ? 0 : id; }

void create_text_once(const strata::data_set& set, const char* name, const std::string& text) {
    if (!set.exists_attribute(name))
        create_text(set, name, text);
}

/// A set without a description gets one, and so do its occurrences that have none.
void fill_description(const strata::data_set& set, const std::string& description) {
    if (!write_description(set, description))
        return;
    const auto of_occurrences = set.retrieve_attribute(attribute::occurrence_descriptions);
    if (!of_occurrences)
        return;
    auto texts = read_vector<std::string>(of_occurrences);
    std::ranges::replace(texts, std::string(), description);
    write_vector(of_occurrences, texts);
}

/// What the set says of the event; an event that exists keeps what it has, but for an empty
/// description.
void describe_event(strata::data_set set, const occurrence& added) {
    create_text_once(set, attribute::event_context, added.context);
    if (!set.exists_attribute(attribute::event_icons)) {
        auto icons = set.create_attribute(attribute::event_icons, strata::data_shape({1}, false),
                                          strata::data_type::int32);
        write(icons, icon_of(added.id));
    }
    create_text_once(set, attribute::event_subject, added.subject);
    const auto description = set.retrieve_attribute(attribute::event_description);
    if (!description)
        create_text(set, attribute::event_description, added.description);
    else if (read<std::string>(description).empty() && !added.description.empty())
        fill_description(set, added.description);
    create_text_once(set, attribute::event_type, schema::event_type(added.id, added.label));
}

/// Whether an attribute has an element for each occurrence, as it gets when one is appended.
template <typename Value>
bool has_elements(const strata::data_attribute& attribute, std::size_t count) {
    return attribute.type() == strata::data_type_of<Value> &&
           attribute.shape() == strata::data_shape({static_cast<std::int64_t>(count)}, false);
}

/// Adds `value` to an attribute with one element an occurrence; occurrences before it that the
/// attribute does not know get `former`.
template <typename Value>
void extend_occurrences(strata::data_set set, const char* name, std::size_t former_count,
                        const Value& former, const Value& value) {
    const auto attribute = set.retrieve_attribute(name);
    if (has_elements<Value>(attribute, former_count) && append_element(attribute, value))
        return;
    auto values = read_vector<Value>(attribute);
    values.resize(former_count, former);
    values.push_back(value);
    if (attribute)
        set.delete_attribute(name);
    auto created = set.create_attribute(
        name, strata::data_shape({static_cast<std::int64_t>(values.size())}, false),
        strata::data_type_of<Value>);
    write_vector(created, values);
}

void describe_occurrence(const strata::data_set& set, std::size_t former_count,
                         const occurrence& added) {
    const auto text = [&](const char* name) {
        return read<std::string>(set.retrieve_attribute(name));
    };
    // What is not given is what the set says, which is what all getters show of the occurrence.
    const auto given_or_shown = [&](const std::string& given, const char* name) {
        return given.empty() ? text(name) : given;
    };
    const auto icon = read<std::int32_t>(set.retrieve_attribute(attribute::event_icons));
    extend_occurrences(set, attribute::occurrence_contexts, former_count,
                       text(attribute::event_context), added.context);
    extend_occurrences(set, attribute::occurrence_labels, former_count, added.label, added.label);
    extend_occurrences(set, attribute::occurrence_subjects, former_count,
                       text(attribute::event_subject),
                       given_or_shown(added.subject, attribute::event_subject));
    extend_occurrences(set, attribute::occurrence_descriptions, former_count,
                       text(attribute::event_description),
                       given_or_shown(added.description, attribute::event_description));
    extend_occurrences(set, attribute::occurrence_icons, former_count, icon,
                       added.id == -1 ? icon : added.id);
    extend_occurrences(set, attribute::occurrence_flags, former_count, std::int32_t{0},
                       std::int32_t{0});
}

/// Whether a set holds its times as a new one does.
bool holds_times(const strata::data_set& set) {
    return strata::element_kind(set.type()) == strata::data_type::float32 &&
           set.shape(false).dimensions().size() == 1;
}

/// Adds a time to a set that held anything else, of which `times` could be read.
void rewrite_times(strata::data_set set, std::vector<float> times, float time) {
    times.push_back(time);
    const std::array<std::uint64_t, 1> extent{times.size()};
    set.resize(extent.data(), extent.size());
    write_vector(select_all(set), times);
}

/// Whether a set has all that describe_event would create or fill.
bool is_described(const strata::data_set& set, const occurrence& added) {
    for (const char* name : {attribute::event_context, attribute::event_icons,
                             attribute::event_subject, attribute::event_type}) {
        if (!set.exists_attribute(name))
            return false;
    }
    const auto description = set.retrieve_attribute(attribute::event_description);
    if (description.type() != strata::data_type::string ||
        !description.shape().dimensions().empty())
        return false;
    return added.description.empty() || !read<std::string>(description).empty();
}

} // namespace

bool write_description(const strata::data_set& set, const std::string& description) {
    const auto attribute = set.retrieve_attribute(attribute::event_description);
    write(attribute, description);
    return attribute && strata::element_kind(attribute.type()) == strata::data_type::string &&
           attribute.shape().element_count() == 1;
}

void add_occurrence(const strata::data_set& set, const occurrence& added) {
    if (holds_times(set)) {
        const auto former_count = set.shape(false).element_count();
        describe_event(set, added);
        describe_occurrence(set, former_count, added);
        if (!append_element(set, added.time))
            log_store_failure(store_failure::write_set);
        return;
    }
    std::vector<float> times;
    read_vector(select_all(set), times);
    describe_event(set, added);
    describe_occurrence(set, times.size(), added);
    rewrite_times(set, std::move(times), added.time);
}

bool knows_each_occurrence(const strata::data_set& set) {
    if (!holds_times(set))
        return false;
    const auto count = set.shape(false).element_count();
    return std::ranges::all_of(texts_of_occurrences,
                               [&](const char* name) {
                                   return has_elements<std::string>(set.retrieve_attribute(name),
                                                                    count);
                               }) &&
           std::ranges::all_of(numbers_of_occurrences, [&](const char* name) {
               return has_elements<std::int32_t>(set.retrieve_attribute(name), count);
           });
}

bool only_grows(const strata::data_set& set, const occurrence& added) {
    return knows_each_occurrence(set) && is_described(set, added);
}

void append_to_each(const strata::data_set& set, const schema::event_occurrence& added) {
    const auto former_count = set.shape(false).element_count();
    const auto append = [&](const char* name, const auto& value) {
        return append_element(set.retrieve_attribute(name), value);
    };
    try {
        const bool is_appended = append(attribute::occurrence_contexts, added.context) &&
                                 append(attribute::occurrence_labels, added.label) &&
                                 append(attribute::occurrence_subjects, added.subject) &&
                                 append(attribute::occurrence_descriptions, added.description) &&
                                 append(attribute::occurrence_icons, added.icon) &&
                                 append(attribute::occurrence_flags, added.flags) &&
                                 append_element(set, added.time_s);
        if (!is_appended)
            throw_system_error("The times of an event cannot be written");
    } catch (...) {
        keep_occurrences(set, former_count);
        throw;
    }
}

void keep_occurrences(const strata::data_set& set, std::uint64_t count) noexcept {
    for (const char* name : texts_of_occurrences)
        strata::keep_first_elements(set.retrieve_attribute(name), count);
    for (const char* name : numbers_of_occurrences)
        strata::keep_first_elements(set.retrieve_attribute(name), count);
    strata::keep_first_elements(set, count);
}

} // namespace mox::events
