#include "store/python.hpp"

#include "api/events/single_events.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <strata/access/draft_set.hpp>
#include <strata/access/read_texts.hpp>

#include "api/events/event_occurrences.hpp"
#include "api/events/event_sets.hpp"
#include "api/events/event_tuples.hpp"
#include "schema/event_sets.hpp"
#include "schema/event_types.hpp"
#include "schema/names.hpp"
#include "schema/read_attribute.hpp"
#include "store/path_helpers.hpp"
#include "store/swig_error.hpp"
#include "store/typed_access.hpp"

namespace mox::events {

namespace {

using schema::event_occurrence;
using rows = std::vector<event_occurrence>;

/// A set of the group of events, or the place for one.
struct event_place {
    std::string name;
    strata::data_set set; ///< denotes nothing where there is none yet
    rows occurrences;
};

bool holds_real_numbers(const strata::data_set& set) {
    const auto kind = strata::element_kind(set.type());
    return kind == strata::data_type::float32 || kind == strata::data_type::float64;
}

/// Where an occurrence of this context and label belongs.
event_place place_for(const strata::data_group& events, const event_occurrence& added) {
    const auto name = schema::event_set_name(added.context, added.label);
    for (std::size_t number = 1;; ++number) {
        const auto candidate = schema::numbered_event_set(name, number);
        if (!events.exists_set(candidate))
            return {candidate, {}, {}};
        const auto set = events.retrieve_set(candidate);
        auto occurrences =
            holds_real_numbers(set) ? schema::read_occurrences(set) : std::optional<rows>();
        if (occurrences && (occurrences->empty() || occurrences->front().context == added.context))
            return {candidate, set, std::move(*occurrences)};
    }
}

/// The set of place_for where adding the occurrence is all that becomes of it: its other ones stay
/// as they are, and are not read. Nothing otherwise, and where there is none yet.
std::optional<strata::data_set> set_that_grows(const strata::data_group& events,
                                               const event_occurrence& added) {
    const auto name = schema::event_set_name(added.context, added.label);
    for (std::size_t number = 1;; ++number) {
        const auto candidate = schema::numbered_event_set(name, number);
        if (!events.exists_set(candidate))
            return std::nullopt;
        const auto set = events.retrieve_set(candidate);
        const auto first_of = [&](const char* texts) {
            return strata::read_first_text(set.retrieve_attribute(texts));
        };
        const auto context = first_of(attribute::occurrence_contexts);
        if (!context || !knows_each_occurrence(set))
            return std::nullopt;
        if (*context != added.context)
            continue;
        // An empty first description is about to become that of the set (read_occurrences).
        const bool is_settled =
            first_of(attribute::occurrence_descriptions) != "" ||
            schema::read_text(set.retrieve_attribute(attribute::event_description)).empty();
        return is_settled ? std::optional(set) : std::nullopt;
    }
}

struct found_occurrence {
    event_place place;
    std::size_t index;
};

/// The first occurrence that has all of `wanted` but its flags.
found_occurrence find(const strata::data_group& events, event_occurrence wanted) {
    for (const auto& set : sets_of(events)) {
        auto occurrences = schema::read_occurrences(set).value_or(rows());
        const auto found = std::ranges::find_if(occurrences, [&](const auto& occurrence) {
            wanted.flags = occurrence.flags;
            return occurrence == wanted;
        });
        if (found != occurrences.end()) {
            const auto index = static_cast<std::size_t>(found - occurrences.begin());
            return {{set.name(), set, std::move(occurrences)}, index};
        }
    }
    throw swig_error(error_code::value, fmt::format("there is no event '{}' of '{}' at {} s",
                                                    wanted.label, wanted.context, wanted.time_s));
}

void write_times(strata::data_set& set, const rows& occurrences) {
    std::vector<float> times(occurrences.size());
    std::ranges::transform(occurrences, times.begin(), &event_occurrence::time_s);
    const std::array<std::uint64_t, 1> extent{times.size()};
    set.resize(extent.data(), extent.size());
    if (!select_all(set).write_value(times.data(), strata::data_type::float32))
        throw_system_error("The times of an event cannot be written");
}

/// The type that follows from a new first occurrence. An id of 0, which all have that were given
/// none, says nothing beside the label.
std::string type_of(const event_occurrence& first) {
    return schema::event_type(first.icon == 0 ? -1 : first.icon, first.label);
}

/// Makes what a set says of the whole event follow its first occurrence, where that is another one
/// than before. A file says it so.
void follow_first(strata::data_set& set, const rows& former, const event_occurrence& first) {
    if (former.empty())
        return schema::write_event(set, first, type_of(first));
    const auto& before = former.front();
    const bool same_type = before.icon == first.icon && before.label == first.label;
    if (same_type && before.context == first.context && before.subject == first.subject &&
        before.description == first.description)
        return;
    const bool keeps_type = same_type && set.exists_attribute(attribute::event_type);
    const auto type = keeps_type ? schema::read_text(set.retrieve_attribute(attribute::event_type))
                                 : type_of(first);
    schema::write_event(set, first, type);
}

void fill(strata::data_set& set, const rows& former, const rows& occurrences) {
    write_times(set, occurrences);
    follow_first(set, former, occurrences.front());
    schema::write_occurrences(set, occurrences);
}

/// What the set of `place` becomes; nothing without occurrences.
strata::data_set draft_with(const event_place& place, const rows& occurrences) {
    if (occurrences.empty())
        return {};
    auto draft = strata::draft_of(place.set);
    fill(draft, place.occurrences, occurrences);
    return draft;
}

/// Makes the set of `place` what draft_with said; the last step of a change, which cannot fail.
void commit(strata::data_group events, const event_place& place, const strata::data_set& draft) {
    if (draft)
        strata::exchange_content(place.set, draft);
    else
        events.delete_set(place.name);
}

void append_to(strata::data_group events, const event_place& place, event_occurrence added) {
    auto occurrences = place.occurrences;
    occurrences.push_back(std::move(added));
    if (place.set)
        return commit(events, place, draft_with(place, occurrences));
    auto set = create_event(events, place.name);
    try {
        fill(set, {}, occurrences);
    } catch (...) {
        events.delete_set(place.name);
        throw;
    }
}

} // namespace

py_ref list_events(strata::data_store acquisition) {
    auto list = py_ref::checked(PyList_New(0));
    if (!acquisition.root().exists_group(schema::events))
        return list;
    for (const auto& set : sets_of(event_group(acquisition))) {
        for (const auto& occurrence : schema::read_occurrences(set).value_or(rows())) {
            if (PyList_Append(list.get(), to_tuple(occurrence).get()) != 0)
                throw python_error{};
        }
    }
    return list;
}

py_ref append_event(strata::data_store acquisition, PyObject* event) {
    const auto added = from_tuple(event);
    auto stored = to_tuple(added);
    const auto group = event_group(acquisition);
    if (const auto set = set_that_grows(group, added))
        append_to_each(*set, added);
    else
        append_to(group, place_for(group, added), added);
    return stored;
}

void remove_event(strata::data_store acquisition, PyObject* event) {
    const auto group = event_group(acquisition);
    const auto [place, index] = find(group, from_tuple(event));
    auto occurrences = place.occurrences;
    occurrences.erase(occurrences.begin() + static_cast<std::ptrdiff_t>(index));
    commit(group, place, draft_with(place, occurrences));
}

py_ref replace_event(strata::data_store acquisition, PyObject* event, PyObject* replacement) {
    auto changed = from_tuple(replacement);
    auto stored = to_tuple(changed);
    const auto group = event_group(acquisition);
    const auto [place, index] = find(group, from_tuple(event));
    changed.flags = place.occurrences[index].flags;
    const auto target = place_for(group, changed);
    auto occurrences = place.occurrences;
    if (target.name == place.name) {
        occurrences[index] = std::move(changed);
        commit(group, place, draft_with(place, occurrences));
        return stored;
    }
    occurrences.erase(occurrences.begin() + static_cast<std::ptrdiff_t>(index));
    const auto remaining = draft_with(place, occurrences);
    append_to(group, target, std::move(changed));
    commit(group, place, remaining);
    return stored;
}

} // namespace mox::events
