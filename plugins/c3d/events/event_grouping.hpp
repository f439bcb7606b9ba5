#pragma once

#include <string>
#include <vector>

#include "plugins/c3d/events/read_events.hpp"

namespace c3d {

/// The occurrences of one event set.
struct event_set {
    std::string name;
    std::vector<event_occurrence> occurrences;
};

/// Gathers events into sets: those of the parameter group, then those of the header that the group
/// does not have. schema/event_sets.hpp says how a set is called. Sets and occurrences are in order
/// of appearance. Contexts that differ are never mixed, even where context and label happen to read
/// the same together: the later one's set gets a number.
[[nodiscard]] std::vector<event_set>
grouped_events(const std::vector<event_occurrence>& from_group,
               const std::vector<event_occurrence>& from_header, const std::string& separator);

/// True when `events` have the header's event: its label alone, or with the context, at the same
/// time.
[[nodiscard]] bool is_among(const event_occurrence& header_event,
                            const std::vector<event_occurrence>& events);

} // namespace c3d
