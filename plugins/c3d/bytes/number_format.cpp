#include "plugins/c3d/bytes/number_format.hpp"

#include <bit>
#include <cmath>

#include "plugins/c3d/bytes/vax_float.hpp"

namespace c3d {

namespace {

std::uint32_t byte_at(const std::byte* bytes, std::size_t index) noexcept {
    return std::to_integer<std::uint32_t>(bytes[index]);
}

} // namespace

std::optional<number_format> format_of_processor_byte(std::uint8_t byte) noexcept {
    switch (byte) {
    case 1:
    case 84:
        return number_format::intel;
    case 2:
    case 85:
        return number_format::dec;
    case 3:
    case 86:
        return number_format::mips;
    default:
        return std::nullopt;
    }
}

std::string_view name_of(number_format format) noexcept {
    switch (format) {
    case number_format::intel:
        return "Intel";
    case number_format::dec:
        return "DEC";
    case number_format::mips:
        return "MIPS";
    }
    return "";
}

std::uint16_t read_unsigned_word(number_format format, const std::byte* bytes) noexcept {
    const auto first = byte_at(bytes, 0);
    const auto second = byte_at(bytes, 1);
    const auto word = format == number_format::mips ? first << 8U | second : second << 8U | first;
    return static_cast<std::uint16_t>(word);
}

std::int16_t read_signed_word(number_format format, const std::byte* bytes) noexcept {
    return static_cast<std::int16_t>(read_unsigned_word(format, bytes));
}

float read_real(number_format format, const std::byte* bytes) noexcept {
    switch (format) {
    case number_format::dec:
        return decode_vax_float(std::span<const std::byte, 4>(bytes, 4));
    case number_format::mips:
        return std::bit_cast<float>(byte_at(bytes, 0) << 24U | byte_at(bytes, 1) << 16U |
                                    byte_at(bytes, 2) << 8U | byte_at(bytes, 3));
    case number_format::intel:
        break;
    }
    return std::bit_cast<float>(byte_at(bytes, 3) << 24U | byte_at(bytes, 2) << 16U |
                                byte_at(bytes, 1) << 8U | byte_at(bytes, 0));
}

void write_word(number_format format, std::byte* bytes, std::uint16_t word) noexcept {
    const auto low = static_cast<std::byte>(word & 0xFFU);
    const auto high = static_cast<std::byte>(word >> 8U);
    bytes[0] = format == number_format::mips ? high : low;
    bytes[1] = format == number_format::mips ? low : high;
}

void write_real(number_format format, std::byte* bytes, float value) noexcept {
    const auto bits =
        format == number_format::dec ? encode_vax_bits(value) : std::bit_cast<std::uint32_t>(value);
    const auto low = static_cast<std::uint16_t>(bits & 0xFFFFU);
    const auto high = static_cast<std::uint16_t>(bits >> 16U);
    const bool low_first = format == number_format::intel;
    write_word(format, bytes, low_first ? low : high);
    write_word(format, bytes + 2, low_first ? high : low);
}

bool holds_real(number_format format, float value) noexcept {
    return format != number_format::dec || !(std::abs(value) >= vax_float_end);
}

std::uint16_t nearest_word(float value) noexcept {
    return static_cast<std::uint16_t>(static_cast<std::int32_t>(std::nearbyint(value)));
}

} // namespace c3d
