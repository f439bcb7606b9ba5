#pragma once

#include <vector>

#include <strata/data_group.hpp>

#include "plugins/c3d/events/event_grouping.hpp"

namespace c3d {

/// Creates a set of the group `events`, in place of one of its name; events_detect says what it
/// has. Requires: an occurrence.
void create_event_set(strata::data_group& events, const event_set& content);

/// The event sets of the group `Events`, in the store's order. What the attributes of single
/// occurrences do not say is taken from the set.
[[nodiscard]] std::vector<event_set> read_event_sets(const strata::data_group& events);

} // namespace c3d
