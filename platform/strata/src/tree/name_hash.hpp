#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace strata::detail {

/// A hash of a node's name. Names are short, so eight bytes are taken at a time, the last ones overlapping those before.
[[nodiscard]] inline std::uint32_t name_hash(std::string_view name) noexcept {
    constexpr std::uint64_t multiplier = 0x9E3779B97F4A7C15; // 2^64 divided by the golden ratio
    const auto mix = [](std::uint64_t hash, std::uint64_t bytes) {
        hash = (hash ^ bytes) * multiplier;
        return hash ^ (hash >> 32);
    };
    const auto* bytes = name.data();
    const auto size = name.size();
    std::uint64_t hash = size;
    std::uint64_t part = 0;
    if (size >= sizeof part) {
        for (std::size_t i = 0; i + sizeof part < size; i += sizeof part) {
            std::memcpy(&part, bytes + i, sizeof part);
            hash = mix(hash, part);
        }
        std::memcpy(&part, bytes + size - sizeof part, sizeof part);
    } else {
        for (std::size_t i = 0; i < size; ++i) part = part << 8 | static_cast<unsigned char>(bytes[i]);
    }
    return static_cast<std::uint32_t>(mix(hash, part));
}

} // namespace strata::detail
