#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <strata/data_attribute.hpp>

#include "layout/data_type_of.hpp"

namespace acquisition_layout {

// What cannot be read counts as missing: a missing attribute, one of another kind, one without
// elements.

/// All texts in row-major order; empty when there are none.
[[nodiscard]] std::vector<std::string> read_texts(const strata::data_attribute& attribute);

/// All numbers in row-major order, converted; empty when there are none.
template <typename Number>
[[nodiscard]] std::vector<Number> read_numbers(const strata::data_attribute& attribute) {
    if (!attribute)
        return {};
    std::vector<Number> values(static_cast<std::size_t>(attribute.shape().element_count()));
    if (values.empty() || !attribute.read_value(values.data(), data_type_of<Number>))
        return {};
    return values;
}

/// The first number.
template <typename Number>
[[nodiscard]] std::optional<Number> read_number(const strata::data_attribute& attribute) {
    const auto values = read_numbers<Number>(attribute);
    return values.empty() ? std::nullopt : std::optional(values.front());
}

} // namespace acquisition_layout
