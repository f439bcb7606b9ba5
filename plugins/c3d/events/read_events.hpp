// Events on their way between a file and the data store.
//
// | file           |                                                   |
// |----------------|---------------------------------------------------|
// | read_events    | the events of EVENT and of the header, one by one |
// | event_grouping | which of them are one set, and its name           |
// | event_sets     | the sets of the data store, made and read back    |
// | events_detect  | the unit that makes the sets of a file            |
// | write_events   | what EVENT and the header say of the sets         |

#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <strata/data_group.hpp>

#include "schema/event_sets.hpp"

namespace c3d {

/// One event as a file has it.
struct event_occurrence : schema::event_occurrence {
    std::size_t position = 0; ///< among the events of the file
    bool has_icon = false;    ///< false when the file has none for it
};

/// The events of the parameter group EVENT (`event`, a group below `Metadata`), in file order: as
/// many as EVENT:USED says and EVENT:TIMES holds. What the other lists do not hold is empty.
[[nodiscard]] std::vector<event_occurrence> group_events(const strata::data_group& event);

/// The events of the header block, kept in `header`.
[[nodiscard]] std::vector<event_occurrence> header_events(const strata::data_group& header);

/// EVENT:TIMES in seconds. `values` in the order of the file, `extents` as stored, slowest first.
/// An event is a pair of minutes and seconds, or seconds alone; `used` tells the two apart where
/// the extents do not.
[[nodiscard]] std::vector<float> event_seconds(const std::vector<float>& values,
                                               const std::vector<std::int64_t>& extents,
                                               std::size_t used);

} // namespace c3d
