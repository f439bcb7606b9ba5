#pragma once

// How events lie in the store: one set of times a name, in the group of events.

#include <string>

#include <strata/data_group.hpp>
#include <strata/data_set.hpp>
#include <strata/data_store.hpp>

#include "schema/names.hpp"

namespace mox::events {

namespace attribute = schema::attribute;

/// The group of events; RuntimeError when the acquisition has none.
[[nodiscard]] strata::data_group event_group(const strata::data_store& acquisition);

/// The set of the event `name`, underscores dropped; RuntimeError that names the event when there
/// is none.
[[nodiscard]] strata::data_set existing_event(const strata::data_group& events,
                                              const std::string& name);

/// The name of the set that the event `name` is appended to: without underscores. RuntimeError for
/// a name that cannot be one: empty, or with "/" or "\".
[[nodiscard]] std::string set_name_to_append_to(const std::string& name);

/// A new set without times.
[[nodiscard]] strata::data_set create_event(strata::data_group events, const std::string& set_name);

} // namespace mox::events
