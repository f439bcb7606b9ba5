#include "platform/anvil/src/escaped_text.hpp"

#include <algorithm>
#include <array>
#include <cstddef>

namespace anvil {

namespace {

/// The first character of a text.
struct character {
    char32_t code = 0;
    std::size_t bytes = 1;
    bool is_valid = false; ///< else one byte that is no UTF-8, as `code`
};

constexpr unsigned char byte_at(std::string_view text, std::size_t place) noexcept {
    return static_cast<unsigned char>(text[place]);
}

/// How many bytes a character has that begins with this one; 0 when none does.
constexpr std::size_t bytes_from(unsigned char first) noexcept {
    if (first < 0x80)
        return 1;
    if (first >= 0xc2 && first < 0xe0)
        return 2;
    if (first >= 0xe0 && first < 0xf0)
        return 3;
    return first >= 0xf0 && first < 0xf5 ? 4 : 0;
}

character first_of(std::string_view text) noexcept {
    // The least code that is written with so many bytes.
    constexpr std::array<char32_t, 5> least{0, 0, 0x80, 0x800, 0x10000};
    const auto first = byte_at(text, 0);
    const character broken{first, 1, false};
    const auto count = bytes_from(first);
    if (count == 0 || count > text.size())
        return broken;
    char32_t code = count == 1 ? first : first & (0x7fU >> count);
    for (std::size_t i = 1; i < count; ++i) {
        if ((byte_at(text, i) & 0xc0U) != 0x80)
            return broken;
        code = code << 6U | (byte_at(text, i) & 0x3fU);
    }
    return code < least[count] ? broken : character{code, count, true};
}

constexpr bool is_control(char32_t code) noexcept {
    return code < 0x20 || (code >= 0x7f && code <= 0x9f);
}

constexpr bool changes_the_look(char32_t code) noexcept {
    struct range {
        char32_t first, last;
    };
    constexpr std::array ranges{
        range{0x061c, 0x061c}, // Arabic letter mark
        range{0x200e, 0x200f}, // left-to-right and right-to-left mark
        range{0x2028, 0x202e}, // separators of lines and paragraphs, embeddings, overrides
        range{0x2066, 0x2069}, // isolates
    };
    return std::ranges::any_of(
        ranges, [code](const range& each) { return code >= each.first && code <= each.last; });
}

void append_digits(std::string& line, char32_t code, unsigned count) {
    while (count != 0)
        line += "0123456789ABCDEF"[(code >> (4 * --count)) & 0xfU];
}

void append(std::string& line, const character& found, std::string_view bytes) {
    if (found.code == '\\') {
        line += "\\\\";
    } else if (found.code == '\n') {
        line += "\\n";
    } else if (found.code == '\r') {
        line += "\\r";
    } else if (found.code != '\t' && is_control(found.code) && found.bytes == 1) {
        line += "\\x";
        append_digits(line, found.code, 2);
    } else if (found.is_valid && found.bytes > 1 &&
               (is_control(found.code) || changes_the_look(found.code))) {
        line += "\\u";
        append_digits(line, found.code, 4);
    } else {
        line += bytes;
    }
}

} // namespace

void append_escaped(std::string& line, std::string_view text) {
    while (!text.empty()) {
        const auto found = first_of(text);
        append(line, found, text.substr(0, found.bytes));
        text.remove_prefix(found.bytes);
    }
}

} // namespace anvil
