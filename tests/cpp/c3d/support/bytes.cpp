#include "tests/cpp/c3d/support/bytes.hpp"

#include <bit>
#include <cmath>
#include <cstdint>
#include <string>

namespace c3d_test {

namespace {

std::byte byte_of(std::uint32_t value) { return static_cast<std::byte>(value & 0xFF); }

/// An F_floating number from its definition: 0.1f × 2^(e − 128), the fraction behind a hidden bit.
byte_vector vax_real(float value) {
    if (value == 0.0F)
        return byte_vector(4);
    int exponent = 0;
    const double fraction = std::frexp(std::abs(double{value}), &exponent);
    const auto bits = static_cast<std::uint32_t>(std::lround(fraction * 16777216.0)) & 0x7FFFFF;
    const auto high =
        (value < 0 ? 0x8000u : 0u) | static_cast<std::uint32_t>(exponent + 128) << 7 | bits >> 16;
    const auto low = bits & 0xFFFF;
    return {byte_of(high), byte_of(high >> 8), byte_of(low), byte_of(low >> 8)};
}

} // namespace

byte_vector hex(std::string_view text) {
    byte_vector bytes;
    std::string digits;
    for (char c : text) {
        if (c == ' ' || c == '|')
            continue;
        digits.push_back(c);
        if (digits.size() < 2)
            continue;
        bytes.push_back(static_cast<std::byte>(std::stoi(digits, nullptr, 16)));
        digits.clear();
    }
    return bytes;
}

byte_vector characters(std::string_view text) {
    byte_vector bytes;
    for (char c : text)
        bytes.push_back(static_cast<std::byte>(c));
    return bytes;
}

byte_vector word(c3d::number_format format, int value) {
    const auto bits = static_cast<std::uint32_t>(value);
    if (format == c3d::number_format::mips)
        return {byte_of(bits >> 8), byte_of(bits)};
    return {byte_of(bits), byte_of(bits >> 8)};
}

byte_vector real(c3d::number_format format, float value) {
    if (format == c3d::number_format::dec)
        return vax_real(value);
    const auto bits = std::bit_cast<std::uint32_t>(value);
    if (format == c3d::number_format::mips) {
        return {byte_of(bits >> 24), byte_of(bits >> 16), byte_of(bits >> 8), byte_of(bits)};
    }
    return {byte_of(bits), byte_of(bits >> 8), byte_of(bits >> 16), byte_of(bits >> 24)};
}

void append(byte_vector& bytes, const byte_vector& more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

} // namespace c3d_test
