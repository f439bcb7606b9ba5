#pragma once

#include <cstddef>
#include <cstdint>

#include <strata/data_type.hpp>
#include <strata/plugin/channel_buffer.hpp>

namespace strata::detail {

/// Writes the values of `count` elements of `row`, from element `first` on, as numbers of the
/// numeric kind `requested`. Requires that the row has these elements.
void decode_row(const channel_buffer& row, std::uint64_t first, std::uint64_t count, std::byte* to,
                data_type requested) noexcept;

} // namespace strata::detail
