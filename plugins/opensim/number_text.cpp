#include "plugins/opensim/number_text.hpp"

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>

#include "plugins/opensim/cells.hpp"

namespace opensim {

namespace {

/// Older Windows libraries write "1.#QNAN", "-1.#IND" and "1.#INF".
std::optional<double> special_number(std::string_view unsigned_text, double sign) {
    constexpr std::string_view mark = "1.#";
    if (!unsigned_text.starts_with(mark))
        return std::nullopt;
    const auto rest = lower_case(unsigned_text.substr(mark.size()));
    if (rest.starts_with("inf"))
        return sign * std::numeric_limits<double>::infinity();
    if (rest.starts_with("qnan") || rest.starts_with("snan") || rest.starts_with("ind"))
        return std::numeric_limits<double>::quiet_NaN();
    return std::nullopt;
}

/// Whether a number that double precision has no place for is a small one.
bool is_too_small(std::string_view unsigned_text) noexcept {
    const auto exponent = unsigned_text.find_first_of("eE");
    if (exponent != std::string_view::npos)
        return unsigned_text.substr(exponent + 1).starts_with('-');
    return unsigned_text.starts_with('0') || unsigned_text.starts_with('.');
}

constexpr bool is_digit(char character) noexcept { return character >= '0' && character <= '9'; }

} // namespace

std::optional<double> number_of(std::string_view text) {
    const bool has_sign = text.starts_with('+') || text.starts_with('-');
    const double sign = text.starts_with('-') ? -1.0 : 1.0;
    if (has_sign)
        text.remove_prefix(1);
    // A second sign is none.
    if (text.empty() || text.front() == '-')
        return std::nullopt;
    double value = 0.0;
    const auto* first = text.data();
    const auto* end = first + text.size();
    const auto [stop, failure] = std::from_chars(first, end, value);
    if (failure == std::errc::result_out_of_range && stop == end && is_too_small(text))
        return sign * 0.0;
    if (failure == std::errc{} && stop == end)
        return sign * value;
    return special_number(text, sign);
}

written_digits digits_of(std::string_view text) noexcept {
    written_digits digits;
    const auto exponent_at = std::min(text.find_first_of("eE"), text.size());
    bool is_behind_point = false;
    for (const char character : text.substr(0, exponent_at)) {
        is_behind_point = is_behind_point || character == '.';
        if (!is_digit(character))
            continue;
        digits.places += is_behind_point ? 1 : 0;
        digits.significant += character != '0' || digits.significant > 0 ? 1 : 0;
    }
    auto exponent_text = text.substr(std::min(exponent_at + 1, text.size()));
    if (exponent_text.starts_with('+'))
        exponent_text.remove_prefix(1);
    int exponent = 0;
    std::from_chars(exponent_text.data(), exponent_text.data() + exponent_text.size(), exponent);
    constexpr int most = 400; // beyond all that double precision has
    digits.places = std::max(digits.places - std::clamp(exponent, -most, most), 0);
    return digits;
}

} // namespace opensim
