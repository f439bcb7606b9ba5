#include "plugins/c3d/bytes/vax_float.hpp"

#include <bit>
#include <limits>

namespace c3d {

float decode_vax_float(std::span<const std::byte, 4> bytes) noexcept {
    const auto at = [&](std::size_t index) { return std::to_integer<std::uint32_t>(bytes[index]); };
    return decode_vax_bits(at(1) << 24U | at(0) << 16U | at(3) << 8U | at(2));
}

float decode_vax_bits(std::uint32_t bits) noexcept {
    const auto exponent = bits >> 23U & 0xFFU;
    if (exponent == 0) {
        return bits >> 31U != 0 ? std::numeric_limits<float>::quiet_NaN() : 0.0F;
    }
    // The fields lie as in an IEEE single, whose exponent means four times as much. Dividing by
    // four takes two off the exponent, also of exponent 255, which would be infinity in IEEE; where
    // nothing is left to take, the division rounds.
    if (exponent > 2)
        return std::bit_cast<float>(bits - (2U << 23U));
    return std::bit_cast<float>(bits) * 0.25F;
}

std::uint32_t encode_vax_bits(float value) noexcept {
    constexpr std::uint32_t reserved_operand = 1U << 31U;
    const auto bits = std::bit_cast<std::uint32_t>(value);
    const auto exponent = bits >> 23U & 0xFFU;
    if (exponent >= 254)
        return reserved_operand;
    if (exponent != 0)
        return bits + (2U << 23U);
    // An IEEE denormal. What stays one after the multiplication is less than any F_floating number.
    const auto larger = std::bit_cast<std::uint32_t>(value * 4.0F);
    return (larger >> 23U & 0xFFU) != 0 ? larger : 0;
}

} // namespace c3d
