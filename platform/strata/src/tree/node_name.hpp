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

/// What hashes depend on besides the name.
struct name_key {
    std::uint64_t seed;
    std::uint64_t multiplier; ///< odd
};

/// A key that nobody can foretell.
[[nodiscard]] name_key draw_name_key() noexcept;

/// The key of this process: names come from files, and who makes one must not be able to choose
/// them so that they all have one hash.
extern const name_key process_name_key;

/// Both halves of the product, mixed. With a multiplier that nobody knows, no difference between
/// two words leads to a known difference between two results.
[[nodiscard]] inline std::uint64_t folded_product(std::uint64_t one, std::uint64_t other) noexcept {
#ifdef __SIZEOF_INT128__
    __extension__ using product_type = unsigned __int128;
    const auto product = static_cast<product_type>(one) * other;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64U);
#else
    constexpr std::uint64_t half = 0xFFFFFFFF;
    const auto low = (one & half) * (other & half);
    const auto left = (one >> 32U) * (other & half) + (low >> 32U);
    const auto right = (one & half) * (other >> 32U) + (left & half);
    return (right << 32U | (low & half)) ^
           ((one >> 32U) * (other >> 32U) + (left >> 32U) + (right >> 32U));
#endif
}

[[nodiscard]] inline std::uint32_t name_hash(std::string_view name, const name_key& key) noexcept {
    const auto mix = [&key](std::uint64_t hash, std::uint64_t word) {
        return folded_product(hash ^ word, key.multiplier);
    };
    const auto* bytes = name.data();
    const auto size = name.size();
    auto hash = key.seed ^ size;
    if (size < 8)
        return static_cast<std::uint32_t>(mix(hash, short_name(bytes, size)));
    for (std::size_t i = 0; i + 8 < size; i += 8)
        hash = mix(hash, load_word<std::uint64_t>(bytes + i));
    return static_cast<std::uint32_t>(mix(hash, load_word<std::uint64_t>(bytes + size - 8)));
}

/// The same with the key of this process.
[[nodiscard]] inline std::uint32_t node_name_hash(std::string_view name) noexcept {
    return name_hash(name, process_name_key);
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
