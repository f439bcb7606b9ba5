// Functions of events.
//
// | file              |                                                |
// |-------------------|------------------------------------------------|
// | read_events       | what they are                                  |
// | event_sets        | the set of a name                              |
// | event_occurrences | what a set says of each time                   |
// | append_event      | one more time                                  |
// | event_tuples      | events as the object view gives them           |
// | single_events     | listing, adding, removing one event            |
// | modify_events     | new events, what is said of them, fewer events |

#pragma once

#include "store/python.hpp"

#include <strata/data_store.hpp>

#include "store/outputs.hpp"

namespace mox::events {

/// {event name: its times in seconds}, one time as a float, more as an array; and {"subject": …,
/// "units": …}.
[[nodiscard]] outputs<2> all(strata::data_store acquisition);

/// Number of occurrences of all events.
[[nodiscard]] double number(strata::data_store acquisition);

/// Times, event names, descriptions and ids, one element an occurrence. Four empty results where
/// there is no group of events.
[[nodiscard]] outputs<4> values(strata::data_store acquisition);

} // namespace mox::events
