#pragma once

#include <cstddef>

#include <strata/data_type.hpp>

namespace strata::detail {

/// Converts `count` elements; neither array needs an alignment, they do not overlap.
using element_converter = void (*)(const std::byte* from, std::byte* to,
                                   std::size_t count) noexcept;

/// The conversion between two numeric kinds; null when one of them is `string` or has no elements.
[[nodiscard]] element_converter find_converter(data_type from, data_type to) noexcept;

} // namespace strata::detail
