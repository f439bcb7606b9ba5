#include "plugins/c3d/bytes/number_format.hpp"

#include <bit>

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

} // namespace c3d
