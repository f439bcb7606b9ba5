// The bytes of an image, in the machine's own order.
//
// | part      | bytes | content                                          |
// |-----------|-------|--------------------------------------------------|
// | mark      | 8     | image_mark                                       |
// | version   | 4     | image_version                                    |
// | order     | 4     | order_mark, which tells the order of bytes       |
// | size      | 8     | bytes of the tree                                |
// | digest    | 8     | digest_of the tree                               |
// | tree      | size  | the root group                                   |
//
// Counts are 64-bit words, a text is its count of bytes and they.
//
// | node      | content |
// |-----------|-------------------------------------------------------------------------------------|
// | group     | attributes; count and sets (name, content); count and groups (name, group) | |
// content   | its number, from 0 in order of appearance; if that is new: type, array, attributes  |
// | attributes| count and attributes (name, type, value) | | value     | a byte that is 0 and a
// single value, or 1 and an array                              | | array     | rank and extents,
// axis of the layout (no_axis: one row); texts: count and texts;    | |           | numbers: count
// and rows                                                             | | row       | number of
// its buffer; if that is new: type, count and elements; offset, factor      |

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

namespace strata::detail {

inline constexpr std::array<char, 8> image_mark = {'\x93', 'S', 'T', 'O', 'R', 'E', '\r', '\n'};
inline constexpr std::uint32_t image_version = 1;
inline constexpr std::uint32_t order_mark = 0x01020304;
inline constexpr std::uint8_t no_axis = 0xFF;

/// What stands before the tree.
struct image_head {
    std::array<char, 8> mark = image_mark;
    std::uint32_t version = image_version;
    std::uint32_t order = order_mark;
    std::uint64_t size = 0;
    std::uint64_t digest = 0;
};
static_assert(sizeof(image_head) == 32);

/// A number that any change of the bytes changes, but for chance.
[[nodiscard]] inline std::uint64_t digest_of(std::span<const std::byte> bytes) noexcept {
    constexpr std::uint64_t multiplier = 0x9E3779B97F4A7C15; // 2^64 divided by the golden ratio
    std::uint64_t digest = bytes.size();
    const auto mix = [&](std::uint64_t word) {
        digest = (digest ^ word) * multiplier;
        digest ^= digest >> 32U;
    };
    for (; bytes.size() >= sizeof(std::uint64_t); bytes = bytes.subspan(sizeof(std::uint64_t))) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes.data(), sizeof word);
        mix(word);
    }
    std::uint64_t rest = 0;
    if (!bytes.empty())
        std::memcpy(&rest, bytes.data(), bytes.size());
    mix(rest);
    return digest;
}

} // namespace strata::detail
