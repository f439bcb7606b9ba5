#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace strata::detail {

/// Most dimensions that an attribute or a set can have.
inline constexpr std::size_t maximum_rank = 8;

/// A block of an element array: where it starts and how far it reaches in each dimension, slowest
/// first.
struct element_box {
    std::array<std::uint64_t, maximum_rank> offset{}; ///< first coordinate in each dimension
    std::array<std::uint64_t, maximum_rank> extent{}; ///< number of coordinates in each dimension
    std::size_t rank = 0; ///< number of dimensions; 0 for a single element

    /// Elements in the block. Requires that the block lies within an array.
    [[nodiscard]] std::uint64_t count() const noexcept {
        std::uint64_t product = 1;
        for (std::size_t i = 0; i < rank; ++i)
            product *= extent[i];
        return product;
    }
};

} // namespace strata::detail
