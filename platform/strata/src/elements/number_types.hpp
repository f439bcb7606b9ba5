#pragma once

#include <cstddef>
#include <cstdint>
#include <tuple>

#include <strata/data_type.hpp>

namespace strata::detail {

/// C++ types of the numeric element kinds, in the order of their values from `boolean` on.
using number_types =
    std::tuple<bool, std::int8_t, std::uint8_t, std::int16_t, std::uint16_t, std::int32_t,
               std::uint32_t, std::int64_t, std::uint64_t, float, double>;

inline constexpr std::size_t number_kinds = std::tuple_size_v<number_types>;

/// Position of a numeric kind in number_types; number_kinds or more for any other type.
[[nodiscard]] constexpr std::size_t number_index(data_type type) noexcept {
    const auto kind = static_cast<std::size_t>(element_kind(type));
    return kind == 0 ? number_kinds : kind - 1;
}

/// Whether elements of this type are numbers (truth values are).
[[nodiscard]] constexpr bool is_number(data_type type) noexcept {
    return number_index(type) < number_kinds;
}

} // namespace strata::detail
