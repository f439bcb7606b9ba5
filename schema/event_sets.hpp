#pragma once

// How the occurrences of an event lie in its set: the times are the elements, the rest is
// attributes with an element for each occurrence, beside those that say one thing of all.

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <strata/data_set.hpp>

namespace schema {

/// One occurrence of an event.
struct event_occurrence {
    std::string context; ///< "Left", "Right", "General" or any other text
    std::string label;
    std::string subject;
    std::string description;
    float time_s = 0.0F; ///< on the clock of the file
    std::int32_t icon = 0;
    std::int32_t flags = 0;

    [[nodiscard]] bool operator==(const event_occurrence&) const = default;
};

/// The occurrences of a set in the order of its times. What the attributes of single occurrences do
/// not say is taken from the set. Nothing when the times cannot be read.
[[nodiscard]] std::optional<std::vector<event_occurrence>>
read_occurrences(const strata::data_set& set);

/// Makes the attributes of single occurrences say these, as many as the set has times.
void write_occurrences(strata::data_set& set, std::span<const event_occurrence> occurrences);

/// Makes the attributes that say one thing of all occurrences say what the first one has. `type` is
/// a result of event_type.
void write_event(strata::data_set& set, const event_occurrence& first, const std::string& type);

/// Name of the set for events of this context and label: both joined; the separator is dropped
/// wherever it stands, and so are "/" and "\"; "Event" when nothing is left.
[[nodiscard]] std::string event_set_name(const std::string& context, const std::string& label,
                                         std::string_view separator = "_");

/// `name` itself for 1, else the name of another set for it: contexts that differ are never mixed,
/// even where context and label happen to read the same together.
[[nodiscard]] std::string numbered_event_set(const std::string& name, std::size_t number);

} // namespace schema
