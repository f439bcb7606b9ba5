#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

// Hash and comparison of nodes' names, which are short: eight bytes at a time and without a call,
// because a lookup consists of little else.

namespace strata::detail {

template <typename Word> [[nodiscard]] inline Word load_word(const char* bytes) noexcept {
    Word word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

/// All bytes of a name of less than eight bytes; different for different names of one length.
[[nodiscard]] inline std::uint64_t short_name(const char* bytes, std::size_t size) noexcept {
    if (size >= 4) { // two words, which overlap unless there are eight bytes
        return load_word<std::uint32_t>(bytes) |
               std::uint64_t{load_word<std::uint32_t>(bytes + size - 4)} << 32U;
    }
    if (size == 0)
        return 0;
    const auto byte = [&](std::size_t i) {
        return std::uint64_t{static_cast<unsigned char>(bytes[i])};
    };
    return byte(0) | byte(size / 2) << 8U | byte(size - 1) << 16U;
}

[[nodiscard]] inline std::uint32_t name_hash(std::string_view name) noexcept {
    constexpr std::uint64_t multiplier = 0x9E3779B97F4A7C15; // 2^64 divided by the golden ratio
    const auto mix = [](std::uint64_t hash, std::uint64_t word) {
        hash = (hash ^ word) * multiplier;
        return hash ^ (hash >> 32U);
    };
    const auto* bytes = name.data();
    const auto size = name.size();
    if (size < 8)
        return static_cast<std::uint32_t>(mix(size, short_name(bytes, size)));
    std::uint64_t hash = size;
    for (std::size_t i = 0; i + 8 < size; i += 8)
        hash = mix(hash, load_word<std::uint64_t>(bytes + i));
    return static_cast<std::uint32_t>(mix(hash, load_word<std::uint64_t>(bytes + size - 8)));
}

[[nodiscard]] inline bool same_name(std::string_view left, std::string_view right) noexcept {
    const auto size = left.size();
    if (size != right.size())
        return false;
    const auto* one = left.data();
    const auto* other = right.data();
    if (size < 8)
        return short_name(one, size) == short_name(other, size);
    const auto same_word = [&](std::size_t i) {
        return load_word<std::uint64_t>(one + i) == load_word<std::uint64_t>(other + i);
    };
    for (std::size_t i = 0; i + 8 < size; i += 8) {
        if (!same_word(i))
            return false;
    }
    return same_word(size - 8);
}

} // namespace strata::detail
