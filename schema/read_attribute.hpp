#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <strata/access/data_type_of.hpp>
#include <strata/data_attribute.hpp>

namespace schema {

// What cannot be read counts as missing: a missing attribute, one of another kind, one without
// elements. Of these the one of another kind is a line in the log as well.

/// That line.
inline constexpr std::string_view unreadable_attribute =
    "Invalid value to read the content of an attribute";
void log_unreadable_attribute() noexcept;

/// True for an attribute of numbers, of which there may be none. Asked first where an attribute of
/// another kind is told of in another way, or not at each reading.
[[nodiscard]] bool holds_numbers(const strata::data_attribute& attribute);

/// All texts in row-major order; empty when there are none.
[[nodiscard]] std::vector<std::string> read_texts(const strata::data_attribute& attribute);

/// The first text; empty when there is none.
[[nodiscard]] std::string read_text(const strata::data_attribute& attribute);

/// All numbers in row-major order, converted; empty when there are none.
template <typename Number>
[[nodiscard]] std::vector<Number> read_numbers(const strata::data_attribute& attribute) {
    if (!attribute)
        return {};
    std::vector<Number> values(static_cast<std::size_t>(attribute.shape().element_count()));
    if (values.empty() || attribute.read_value(values.data(), strata::data_type_of<Number>))
        return values;
    log_unreadable_attribute();
    return {};
}

/// The first number.
template <typename Number>
[[nodiscard]] std::optional<Number> read_number(const strata::data_attribute& attribute) {
    const auto values = read_numbers<Number>(attribute);
    return values.empty() ? std::nullopt : std::optional(values.front());
}

} // namespace schema
