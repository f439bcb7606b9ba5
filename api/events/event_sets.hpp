#pragma once

// How events lie in the store: one set of times a name, in the group of events.

#include <string>

#include <strata/data_group.hpp>
#include <strata/data_set.hpp>
#include <strata/data_store.hpp>

namespace mox::events {

namespace attribute {
inline constexpr char context[] = "Context";
inline constexpr char icons[] = "Icons"; ///< int32, shape {1}: the event's id
inline constexpr char subject[] = "Subject";
inline constexpr char description[] = "Description";
inline constexpr char type[] = "Type";
// One element for each time of the set, where occurrences differ from what the set says.
inline constexpr char occurrence_contexts[] = "OccurrenceContexts";
inline constexpr char occurrence_labels[] = "OccurrenceLabels";
inline constexpr char occurrence_subjects[] = "OccurrenceSubjects";
inline constexpr char occurrence_descriptions[] = "OccurrenceDescriptions";
inline constexpr char occurrence_icons[] = "OccurrenceIcons"; ///< int32
inline constexpr char occurrence_flags[] = "OccurrenceFlags"; ///< int32
} // namespace attribute

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

/// Type word of an event: by its id where that is 0, 1 or 2, else by the synonyms of its label,
/// else the label itself.
[[nodiscard]] std::string type_word(int id, const std::string& label);

} // namespace mox::events
