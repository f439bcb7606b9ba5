#pragma once

#include <charconv>
#include <concepts>
#include <cstdint>
#include <limits>
#include <string>

#include <fmt/format.h>
#include <strata/access/convert_number.hpp>

namespace mox {

/// The number that `text` starts with, blanks skipped; 0 when it starts with none.
template <typename To> [[nodiscard]] To number_from_text(const std::string& text) noexcept {
    const char* first = text.data();
    const char* const last = first + text.size();
    while (first != last && (*first == ' ' || *first == '\t'))
        ++first;
    if (first != last && *first == '+')
        ++first;
    double value = 0.0;
    const auto [end, failure] = std::from_chars(first, last, value);
    if (failure == std::errc::invalid_argument)
        return To{0};
    if (failure == std::errc::result_out_of_range) {
        value = *first == '-' ? -std::numeric_limits<double>::infinity()
                              : std::numeric_limits<double>::infinity();
    }
    return strata::convert_number<To>(value);
}

/// An element as another element type of the metadata.
template <typename To, typename From> [[nodiscard]] To convert_element(const From& value) {
    if constexpr (std::same_as<To, From>) {
        return value;
    } else if constexpr (std::same_as<To, std::string>) {
        if constexpr (std::integral<From>)
            return fmt::format("{}", static_cast<std::int64_t>(value));
        else
            return fmt::format("{}", value);
    } else if constexpr (std::same_as<From, std::string>) {
        return number_from_text<To>(value);
    } else {
        return strata::convert_number<To>(value);
    }
}

} // namespace mox
