#include "plugins/c3d/events/event_sets.hpp"

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <utility>

#include <fmt/format.h>

#include <strata/data_set.hpp>
#include <strata/data_shape.hpp>
#include <strata/data_type.hpp>

#include "plugins/c3d/bytes/export_error.hpp"
#include "schema/event_sets.hpp"
#include "schema/event_types.hpp"

namespace c3d {

namespace {

event_set read_event_set(const strata::data_set& set) {
    auto occurrences = schema::read_occurrences(set);
    if (!occurrences)
        throw export_error("the times of the event '{}' cannot be read", set.name());
    event_set result{set.name(), {}};
    result.occurrences.reserve(occurrences->size());
    for (auto& occurrence : *occurrences)
        result.occurrences.push_back({std::move(occurrence)});
    return result;
}

std::string type_of(const event_occurrence& event) {
    return schema::event_type(event.has_icon ? event.icon : -1, event.label);
}

} // namespace

void create_event_set(strata::data_group& events, const event_set& content) {
    if (events.exists_set(content.name))
        events.delete_set(content.name);
    const std::vector<schema::event_occurrence> occurrences(content.occurrences.begin(),
                                                            content.occurrences.end());
    std::vector<float> times(occurrences.size());
    std::ranges::transform(occurrences, times.begin(), &schema::event_occurrence::time_s);
    const strata::data_shape shape({static_cast<std::int64_t>(times.size())}, false);
    auto set = events.create_set(content.name, shape, strata::data_type::float32);
    if (!set.select(shape, false).write_value(times.data(), strata::data_type::float32)) {
        throw std::runtime_error(
            fmt::format("the times of the event '{}' were refused", content.name));
    }
    schema::write_event(set, occurrences.front(), type_of(content.occurrences.front()));
    schema::write_occurrences(set, occurrences);
}

std::vector<event_set> read_event_sets(const strata::data_group& events) {
    std::vector<event_set> sets;
    for (const auto& name : events.list_set_children_name())
        sets.push_back(read_event_set(events.retrieve_set(name)));
    std::erase_if(sets, [](const auto& set) { return set.occurrences.empty(); });
    return sets;
}

} // namespace c3d
