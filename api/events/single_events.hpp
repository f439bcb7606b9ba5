#pragma once

// Single occurrences of events, with all that is kept of each. An event is a tuple as
// api/events/event_tuples.hpp says. A change happens as a whole or not at all, and touches nothing
// of other occurrences.

#include "store/python.hpp"

#include <strata/data_store.hpp>

namespace mox::events {

/// Every occurrence, set by set, as a list of tuples; an empty one where there is no group of
/// events. A set whose times cannot be read has none.
[[nodiscard]] py_ref list_events(strata::data_store acquisition);

/// Adds an occurrence with exactly these texts and this id; gives it as it is stored. It joins the
/// set of its context and label, as one that a file has does.
[[nodiscard]] py_ref append_event(strata::data_store acquisition, PyObject* event);

/// Removes one occurrence, the first one that is equal. What a set says of the whole event is what
/// its first occurrence has, and a set without occurrences is deleted. ValueError when there is
/// none.
void remove_event(strata::data_store acquisition, PyObject* event);

/// Puts another one in the place of an occurrence, the first one that is equal; gives it as it is
/// stored. Its flags stay. ValueError when there is none.
[[nodiscard]] py_ref replace_event(strata::data_store acquisition, PyObject* event,
                                   PyObject* replacement);

} // namespace mox::events
