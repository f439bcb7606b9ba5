#pragma once

// An occurrence of an event as the object view gives and takes it: the tuple (time, label, context,
// subject, description, id).

#include "store/python.hpp"

#include "schema/event_sets.hpp"

namespace mox::events {

[[nodiscard]] py_ref to_tuple(const schema::event_occurrence& event);

/// The time narrowed to single precision, the flags 0. TypeError for another kind of value in its
/// place; ValueError for a time that is not finite and for a text with a NUL character;
/// OverflowError for an id beyond 32 bits.
[[nodiscard]] schema::event_occurrence from_tuple(PyObject* tuple);

} // namespace mox::events
