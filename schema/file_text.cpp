#include "schema/file_text.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace schema {

namespace {

constexpr std::uint8_t octet(char character) noexcept {
    return static_cast<std::uint8_t>(character);
}

/// How far `bytes` are UTF-8.
struct utf8_extent {
    std::size_t valid = 0;   ///< length of the part that is valid
    bool multibyte = false;  ///< that part has characters beyond ASCII
    bool cut_at_end = false; ///< what follows is the beginning of one character, and nothing else
};

/// Length of the character that `lead` begins, 0 when it begins none.
std::size_t length_of(std::uint8_t lead) noexcept {
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead <= 0xDF)
        return 2;
    if (lead >= 0xE0 && lead <= 0xEF)
        return 3;
    if (lead >= 0xF0 && lead <= 0xF4)
        return 4;
    return 0;
}

/// Overlong forms, surrogates and code points beyond U+10FFFF all show in the second byte.
bool is_second(std::uint8_t lead, std::uint8_t second) noexcept {
    const std::uint8_t lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    const std::uint8_t highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    return second >= lowest && second <= highest;
}

utf8_extent extent_of(std::string_view bytes) noexcept {
    utf8_extent extent;
    while (extent.valid < bytes.size()) {
        const auto lead = octet(bytes[extent.valid]);
        const auto length = length_of(lead);
        if (length == 0)
            return extent;
        const auto available = std::min(length, bytes.size() - extent.valid);
        for (std::size_t i = 1; i < available; ++i) {
            const auto next = octet(bytes[extent.valid + i]);
            const bool fits = i == 1 ? is_second(lead, next) : (next & 0xC0U) == 0x80U;
            if (!fits)
                return extent;
        }
        if (available < length) {
            extent.cut_at_end = true;
            return extent;
        }
        extent.multibyte = extent.multibyte || length > 1;
        extent.valid += length;
    }
    return extent;
}

/// Characters of the bytes 0x80 to 0x9F in Windows-1252; 0 where there is none.
constexpr std::array<std::uint16_t, 32> windows_1252 = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178,
};

void append_utf8(std::string& text, std::uint32_t code_point) {
    const auto append = [&](std::uint32_t byte) { text.push_back(static_cast<char>(byte)); };
    if (code_point < 0x800) {
        append(0xC0U | code_point >> 6U);
    } else {
        append(0xE0U | code_point >> 12U);
        append(0x80U | (code_point >> 6U & 0x3FU));
    }
    append(0x80U | (code_point & 0x3FU));
}

void append_windows_1252(std::string& text, char character) {
    const std::uint32_t byte = octet(character);
    const bool is_special = byte >= 0x80 && byte < 0xA0;
    const auto code_point = is_special ? windows_1252[byte - 0x80U] : byte;
    if (byte < 0x80 || code_point == 0) {
        text.push_back(character);
    } else {
        append_utf8(text, code_point);
    }
}

/// The byte of a character of more than one byte; 0 when it has none.
std::uint8_t windows_1252_of(std::string_view character) {
    std::string candidate;
    for (unsigned byte = 0x80; byte < 0x100; ++byte) {
        candidate.clear();
        append_windows_1252(candidate, static_cast<char>(byte));
        if (candidate == character)
            return static_cast<std::uint8_t>(byte);
    }
    return 0;
}

} // namespace

std::string_view without_padding(std::string_view field) noexcept {
    field = field.substr(0, field.find('\0'));
    const auto last = field.find_last_not_of(' ');
    return last == std::string_view::npos ? std::string_view{} : field.substr(0, last + 1);
}

bool is_utf8(std::string_view bytes) noexcept { return extent_of(bytes).valid == bytes.size(); }

std::string as_utf8(std::string_view bytes) {
    const auto extent = extent_of(bytes);
    // A lone first byte at the end is Latin text ("café"); after other UTF-8 characters it is a cut
    // one.
    if (extent.valid == bytes.size() || (extent.cut_at_end && extent.multibyte)) {
        return std::string(bytes);
    }
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 4);
    for (char character : bytes)
        append_windows_1252(text, character);
    return text;
}

std::string as_stored(std::string_view text) {
    if (as_utf8(text) != text) {
        if (auto other = as_windows_1252(text))
            return std::move(*other);
    }
    return std::string(text);
}

std::string as_stored_within(std::string_view text, std::size_t most) {
    auto stored = as_stored(text);
    if (stored.size() <= most)
        return stored;
    auto shorter = as_windows_1252(text);
    return shorter && shorter->size() <= most ? std::move(*shorter) : stored;
}

std::optional<std::string> as_windows_1252(std::string_view text) {
    std::string bytes;
    for (std::size_t at = 0; at < text.size();) {
        const auto lead = octet(text[at]);
        const auto length = std::min(length_of(lead), text.size() - at);
        if (extent_of(text.substr(at, length)).valid != length || length == 0) {
            bytes.push_back(text[at++]); // a byte that had no character when it was read
            continue;
        }
        const auto byte = length == 1 ? lead : windows_1252_of(text.substr(at, length));
        if (byte == 0)
            return std::nullopt;
        bytes.push_back(static_cast<char>(byte));
        at += length;
    }
    return as_utf8(bytes) == text ? std::optional(std::move(bytes)) : std::nullopt;
}

} // namespace schema
