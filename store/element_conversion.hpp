#pragma once

#include <charconv>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <limits>
#include <string>

#include <fmt/format.h>

namespace mox {

/// A number as another number type: as C++ converts it, saturating where C++ leaves the result
/// open; NaN becomes 0 in integers.
template <typename To, typename From> [[nodiscard]] To convert_number(From value) noexcept {
    if constexpr (std::floating_point<From> && std::integral<To>) {
        if (std::isnan(value))
            return To{0};
        if (value <= static_cast<From>(std::numeric_limits<To>::min()))
            return std::numeric_limits<To>::min();
        if (value >= static_cast<From>(std::numeric_limits<To>::max()))
            return std::numeric_limits<To>::max();
        return static_cast<To>(value);
    } else if constexpr (std::integral<From> && std::integral<To>) {
        if (std::in_range<To>(value))
            return static_cast<To>(value);
        return value < 0 ? std::numeric_limits<To>::min() : std::numeric_limits<To>::max();
    } else {
        return static_cast<To>(value);
    }
}

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
    return convert_number<To>(value);
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
        return convert_number<To>(value);
    }
}

} // namespace mox
