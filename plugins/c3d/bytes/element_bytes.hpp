#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace c3d {

using byte_list = std::vector<std::byte>;

// Numbers as Intel processors hold them: the lowest byte first.

inline void append_byte(byte_list& bytes, unsigned value) {
    bytes.push_back(static_cast<std::byte>(value & 0xFFU));
}

inline void append_word(byte_list& bytes, unsigned value) {
    append_byte(bytes, value);
    append_byte(bytes, value >> 8U);
}

inline void append_real(byte_list& bytes, float value) {
    const auto bits = std::bit_cast<std::uint32_t>(value);
    append_word(bytes, bits);
    append_word(bytes, bits >> 16U);
}

inline void append_text(byte_list& bytes, std::string_view text) {
    for (char character : text)
        bytes.push_back(static_cast<std::byte>(character));
}

inline void put_word(std::byte* at, unsigned value) noexcept {
    at[0] = static_cast<std::byte>(value & 0xFFU);
    at[1] = static_cast<std::byte>(value >> 8U & 0xFFU);
}

inline void put_real(std::byte* at, float value) noexcept {
    const auto bits = std::bit_cast<std::uint32_t>(value);
    put_word(at, bits);
    put_word(at + 2, bits >> 16U);
}

} // namespace c3d
