#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "plugins/c3d/bytes/number_format.hpp"

namespace c3d_test {

using byte_vector = std::vector<std::byte>;

inline constexpr auto intel = c3d::number_format::intel;

/// The bytes written in `text` as pairs of hexadecimal digits; blanks and "|" between them are
/// skipped.
[[nodiscard]] byte_vector hex(std::string_view text);

[[nodiscard]] byte_vector characters(std::string_view text);

/// One number as a file of this format holds it. Written independently of the code under test.
[[nodiscard]] byte_vector word(c3d::number_format format, int value);
[[nodiscard]] byte_vector real(c3d::number_format format, float value);

void append(byte_vector& bytes, const byte_vector& more);

} // namespace c3d_test
