#pragma once

// Occurrences of an event: what the set of an event knows of each.

#include <cstdint>
#include <string>

#include <strata/data_set.hpp>

#include "schema/event_sets.hpp"

namespace mox::events {

/// An occurrence to be appended.
struct occurrence {
    const std::string& label;
    float time;
    const std::string& context;
    const std::string& subject;
    const std::string& description;
    int id; ///< −1: not given
};

/// Gives a set a description. False, as the log says, when it keeps the one that it has: what the
/// getters show is then no other, and no occurrence may be told another for the file.
bool write_description(const strata::data_set& set, const std::string& description);

/// Adds an occurrence to the set of its event. Where the set has the form that new events have,
/// nothing is done but to add an element to each array. When memory runs out, some of them have it.
void add_occurrence(const strata::data_set& set, const occurrence& added);

/// Whether a set has the form that new events have: a time an occurrence, and an element for each
/// in every array that tells of single ones.
[[nodiscard]] bool knows_each_occurrence(const strata::data_set& set);

/// Whether all that add_occurrence does to a set is to add an element to each array.
[[nodiscard]] bool only_grows(const strata::data_set& set, const occurrence& added);

/// Takes back what add_occurrence added to a set that only grows.
void keep_occurrences(const strata::data_set& set, std::uint64_t count) noexcept;

/// Adds an occurrence with exactly these values to a set of the form that new events have. When
/// memory runs out, nothing has changed.
void append_to_each(const strata::data_set& set, const schema::event_occurrence& added);

} // namespace mox::events
