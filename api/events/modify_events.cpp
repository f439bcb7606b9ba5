#include "store/python.hpp"

#include "api/events/modify_events.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include <fmt/format.h>
#include <strata/access/append_elements.hpp>
#include <strata/access/draft_set.hpp>

#include "api/events/event_sets.hpp"
#include "api/events/read_events.hpp"
#include "api/unavailable.hpp"
#include "schema/event_types.hpp"
#include "schema/read_attribute.hpp"
#include "store/append_element.hpp"
#include "store/path_helpers.hpp"
#include "store/swig_error.hpp"
#include "store/typed_access.hpp"

namespace mox::events {

namespace {

/// An occurrence to be appended.
struct occurrence {
    const std::string& label;
    float time;
    const std::string& context;
    const std::string& subject;
    const std::string& description;
    int id; ///< −1: not given
};

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

/// Gives a set a description. False, as the log says, when it keeps the one that it has: what the
/// getters show is then no other, and no occurrence may be told another for the file.
bool write_description(const strata::data_set& set, const std::string& description) {
    const auto attribute = set.retrieve_attribute(attribute::event_description);
    write(attribute, description);
    return attribute && strata::element_kind(attribute.type()) == strata::data_type::string &&
           attribute.shape().element_count() == 1;
}

/// Gives a set an id. False when it has no place for one; the occurrences keep theirs then, too.
bool write_icons(const strata::data_set& set, int id) {
    const auto icons = set.retrieve_attribute(attribute::event_icons);
    const auto count = icons ? icons.shape().element_count() : 0;
    if (count == 0)
        return false;
    write_vector(icons, std::vector<std::int32_t>(count, id));
    return schema::holds_numbers(icons);
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
bool knows_each_occurrence(const strata::data_attribute& attribute, std::size_t count) {
    return attribute.type() == strata::data_type_of<Value> &&
           attribute.shape() == strata::data_shape({static_cast<std::int64_t>(count)}, false);
}

/// Adds `value` to an attribute with one element an occurrence; occurrences before it that the
/// attribute does not know get `former`.
template <typename Value>
void extend_occurrences(strata::data_set set, const char* name, std::size_t former_count,
                        const Value& former, const Value& value) {
    const auto attribute = set.retrieve_attribute(name);
    if (knows_each_occurrence<Value>(attribute, former_count) && append_element(attribute, value))
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

/// Where a set has the form that new events have, nothing is done but to add an element to each
/// array. When memory runs out, some of them have it.
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

/// Whether all that add_occurrence does to a set is to add an element to each array.
bool only_grows(const strata::data_set& set, const occurrence& added) {
    if (!holds_times(set) || !is_described(set, added))
        return false;
    const auto count = set.shape(false).element_count();
    return std::ranges::all_of(texts_of_occurrences,
                               [&](const char* name) {
                                   return knows_each_occurrence<std::string>(
                                       set.retrieve_attribute(name), count);
                               }) &&
           std::ranges::all_of(numbers_of_occurrences, [&](const char* name) {
               return knows_each_occurrence<std::int32_t>(set.retrieve_attribute(name), count);
           });
}

/// Takes back what add_occurrence added to a set that only grows.
void keep_occurrences(const strata::data_set& set, std::uint64_t count) noexcept {
    for (const char* name : texts_of_occurrences)
        strata::keep_first_elements(set.retrieve_attribute(name), count);
    for (const char* name : numbers_of_occurrences)
        strata::keep_first_elements(set.retrieve_attribute(name), count);
    strata::keep_first_elements(set, count);
}

void start_event(strata::data_group events, const std::string& name, const occurrence& added) {
    const auto set = create_event(events, name);
    try {
        add_occurrence(set, added);
    } catch (...) {
        events.delete_set(name);
        throw;
    }
}

void grow_event(const strata::data_set& set, const occurrence& added) {
    const auto former_count = set.shape(false).element_count();
    try {
        add_occurrence(set, added);
    } catch (...) {
        keep_occurrences(set, former_count);
        throw;
    }
}

void rebuild_event(const strata::data_set& set, const occurrence& added) {
    const auto draft = strata::draft_of(set);
    add_occurrence(draft, added);
    strata::exchange_content(set, draft);
}

/// Adds an occurrence to the set `name`, which is created when there is none. When memory runs out,
/// nothing has changed.
void append_occurrence(const strata::data_group& events, const std::string& name,
                       const occurrence& added) {
    if (!events.exists_set(name))
        return start_event(events, name, added);
    const auto set = events.retrieve_set(name);
    if (only_grows(set, added))
        return grow_event(set, added);
    rebuild_event(set, added);
}

float single_precision_time(double time) {
    const auto narrowed = static_cast<float>(time);
    if (!std::isfinite(narrowed))
        throw_runtime_error(
            fmt::format("The time of an event must be a finite number in single precision, "
                        "current is : {}",
                        time));
    return narrowed;
}

} // namespace

outputs<2> append(strata::data_store acquisition, const std::string& label, const double& time,
                  const std::string& context) {
    return append_with_id(acquisition, label, time, context, {}, {}, -1);
}

outputs<2> append_with_subject(strata::data_store acquisition, const std::string& label,
                               const double& time, const std::string& context,
                               const std::string& subject) {
    return append_with_id(acquisition, label, time, context, subject, {}, -1);
}

outputs<2> append_with_description(strata::data_store acquisition, const std::string& label,
                                   const double& time, const std::string& context,
                                   const std::string& subject, const std::string& description) {
    return append_with_id(acquisition, label, time, context, subject, description, -1);
}

outputs<2> append_with_id(strata::data_store acquisition, const std::string& label,
                          const double& time, const std::string& context,
                          const std::string& subject, const std::string& description, int id) {
    const auto group = event_group(acquisition);
    const occurrence added{label, single_precision_time(time), context, subject, description, id};
    append_occurrence(group, set_name_to_append_to(context + label), added);
    return all(acquisition);
}

outputs<2> set_description(strata::data_store acquisition, const std::string& event,
                           const std::string& description) {
    const auto set = existing_event(event_group(acquisition), event);
    const auto occurrences = set.retrieve_attribute(attribute::occurrence_descriptions);
    if (write_description(set, description) && occurrences)
        write_vector(occurrences, std::vector(occurrences.shape().element_count(), description));
    return all(acquisition);
}

outputs<2> set_id(strata::data_store acquisition, const std::string& event, int id) {
    const auto set = existing_event(event_group(acquisition), event);
    const auto occurrences = set.retrieve_attribute(attribute::occurrence_icons);
    if (write_icons(set, id) && occurrences)
        write_vector(occurrences,
                     std::vector<std::int32_t>(occurrences.shape().element_count(), id));
    return all(acquisition);
}

outputs<2> set_label(strata::data_store /*acquisition*/, int /*index*/,
                     const std::string& /*label*/) {
    throw_not_implemented();
}

outputs<2> set_time(strata::data_store /*acquisition*/, int /*index*/, float /*time*/) {
    throw_not_implemented();
}

outputs<2> set_subject(strata::data_store /*acquisition*/, int /*index*/,
                       const std::string& /*subject*/) {
    throw_not_implemented();
}

void clear(strata::data_store acquisition) { delete_sets(event_group(acquisition)); }

} // namespace mox::events
