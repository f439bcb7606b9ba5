#pragma once

#include <cstddef>
#include <cstring>
#include <type_traits>

namespace strata::detail {

/// Element `index` of `elements`, which need not be aligned for it.
template <typename Number>
[[nodiscard]] Number load(const std::byte* elements, std::size_t index) noexcept {
    if constexpr (std::is_same_v<Number, bool>) {
        return elements[index] !=
               std::byte{0}; // any other bit pattern is true, and no valid bool object
    } else {
        Number value;
        std::memcpy(&value, elements + index * sizeof(Number), sizeof(Number));
        return value;
    }
}

template <typename Number>
void save(std::byte* elements, std::size_t index, Number value) noexcept {
    std::memcpy(elements + index * sizeof(Number), &value, sizeof(Number));
}

} // namespace strata::detail
