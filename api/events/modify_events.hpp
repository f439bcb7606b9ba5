#pragma once

// Changes of events. Each call but clear ends with the fresh reading of all events.

#include "store/python.hpp"

#include <string>

#include <strata/data_store.hpp>

#include "store/outputs.hpp"

namespace mox::events {

/// Sets the description, or the id, of every occurrence of an event. RuntimeError when there is no
/// such event.
[[nodiscard]] outputs<2> set_description(strata::data_store acquisition, const std::string& event,
                                         const std::string& description);
[[nodiscard]] outputs<2> set_id(strata::data_store acquisition, const std::string& event, int id);

/// Always refused: the store keeps events by name, not by index.
[[nodiscard]] outputs<2> set_label(strata::data_store acquisition, int index,
                                   const std::string& label);
[[nodiscard]] outputs<2> set_time(strata::data_store acquisition, int index, float time);
[[nodiscard]] outputs<2> set_subject(strata::data_store acquisition, int index,
                                     const std::string& subject);

/// Deletes every event.
void clear(strata::data_store acquisition);

} // namespace mox::events
