#pragma once

// Attributes, sets and selections as native values. Failures of the store are logged, never raised:
// a reader that fails leaves the default value, a writer that fails leaves the store as it was.

#include <cstdint>
#include <string>
#include <vector>

#include <strata/access/data_type_of.hpp>
#include <strata/data_attribute.hpp>
#include <strata/data_group.hpp>
#include <strata/data_selection.hpp>
#include <strata/data_set.hpp>

#include "store/store_log.hpp"

namespace mox {

/// All elements of an attribute in order; empty when it has none, cannot be read, or denotes
/// nothing.
template <typename Native>
[[nodiscard]] std::vector<Native> read_vector(const strata::data_attribute& attribute);

/// The first element of an attribute; `fallback` when it has none, cannot be read, or denotes
/// nothing.
template <typename Native>
[[nodiscard]] Native read(const strata::data_attribute& attribute, Native fallback = Native{}) {
    if (!attribute)
        return fallback;
    const auto count = attribute.shape().element_count();
    if (count == 0)
        return fallback;
    if (count != 1) {
        auto values = read_vector<Native>(attribute);
        return values.empty() ? fallback : values.front();
    }
    Native value = fallback;
    if (!attribute.read_value(&value, strata::data_type_of<Native>))
        log_store_failure(store_failure::read_attribute);
    return value;
}
template <>
[[nodiscard]] std::string read<std::string>(const strata::data_attribute& attribute,
                                            std::string fallback);

/// All elements of a selection in order. False, with `values` unchanged, when it is invalid or
/// cannot be read.
template <typename Native>
bool read_vector(const strata::data_selection& selection, std::vector<Native>& values);

/// The one element of a selection. False, with `value` unchanged, when there is not exactly one or
/// it cannot be read.
template <typename Native> bool read(const strata::data_selection& selection, Native& value);

/// All elements of a set in order; empty when they cannot be read.
template <typename Native>
[[nodiscard]] std::vector<Native> read_vector(const strata::data_set& set) {
    std::vector<Native> values;
    read_vector(set.select(set.shape(false), false), values);
    return values;
}

/// Replaces the elements of an attribute, whose shape must hold as many.
template <typename Native>
void write_vector(strata::data_attribute attribute, const std::vector<Native>& values);

/// Replaces the one element of an attribute.
template <typename Native> void write(strata::data_attribute attribute, const Native& value) {
    if (!attribute || attribute.shape().element_count() != 1) {
        log_store_failure(store_failure::attribute_count);
    } else if (!attribute.write_value(&value, strata::data_type_of<Native>)) {
        log_store_failure(store_failure::write_attribute);
    }
}
template <>
inline void write<std::string>(strata::data_attribute attribute, const std::string& text) {
    write_vector(std::move(attribute), std::vector<std::string>{text});
}

/// Replaces the elements of a selection, whose shape must hold as many; `Native` is float or
/// double.
template <typename Native>
void write_vector(strata::data_selection selection, const std::vector<Native>& values);

/// A selection of all elements of `set`.
[[nodiscard]] inline strata::data_selection select_all(const strata::data_set& set) {
    return set.select(set.shape(false), false);
}

/// Writes `value` into the scalar attribute `name` of a group or a set, which gets the attribute,
/// of the native type, when it lacks it.
template <typename Native, typename Owner>
void write_or_create(Owner owner, const char* name, const Native& value) {
    auto attribute =
        owner.exists_attribute(name)
            ? owner.retrieve_attribute(name)
            : owner.create_attribute(name, strata::data_shape(false), strata::data_type_of<Native>);
    if (attribute)
        write(attribute, value);
}

/// Creates a scalar text attribute on a group or a set.
template <typename Owner> void create_text(Owner owner, const char* name, const std::string& text) {
    auto attribute =
        owner.create_attribute(name, strata::data_shape(false), strata::data_type::string);
    if (attribute)
        write(attribute, text);
}

} // namespace mox
