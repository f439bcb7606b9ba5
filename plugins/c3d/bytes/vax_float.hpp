#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace c3d {

/// One DEC F_floating number (4 bytes as in the file: two little-endian words, the high one first)
/// as an IEEE single. Exponent 0 means zero, whatever the fraction; with the sign bit set it is a
/// reserved operand and gives NaN. The two smallest exponents give IEEE denormals, rounded to
/// nearest.
[[nodiscard]] float decode_vax_float(std::span<const std::byte, 4> bytes) noexcept;

/// As decode_vax_float, from the 32 bits in the order sign, exponent, fraction.
[[nodiscard]] float decode_vax_bits(std::uint32_t bits) noexcept;

/// The smallest magnitude that is too large for an F_floating number: 2^127.
inline constexpr float vax_float_end = 0x1p127F;

/// The reverse of decode_vax_bits. Numbers below 2^−128 become zero, which has no sign; NaN and
/// numbers from vax_float_end on become the reserved operand.
[[nodiscard]] std::uint32_t encode_vax_bits(float value) noexcept;

} // namespace c3d
