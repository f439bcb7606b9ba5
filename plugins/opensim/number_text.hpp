#pragma once

#include <optional>
#include <string_view>

namespace opensim {

/// The number that a text says and nothing else; with a decimal point whatever the locale. NaN and
/// infinity in the spellings of all C libraries are numbers; what is too large for double precision
/// is none, what is too small is 0.
[[nodiscard]] std::optional<double> number_of(std::string_view text);

/// How a number is written.
struct written_digits {
    int places = 0;      ///< behind the decimal point, with the exponent applied: 0 or more
    int significant = 0; ///< from the first that is not 0 on
};

/// `text` is a number.
[[nodiscard]] written_digits digits_of(std::string_view text) noexcept;

} // namespace opensim
