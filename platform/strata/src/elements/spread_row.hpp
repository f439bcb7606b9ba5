#pragma once

#include <cstddef>
#include <cstdint>

#include <strata/plugin/channel_buffer.hpp>

namespace strata::detail {

/// Writes the values of `count` elements of `row`, from element `first` on, to doubles that lie
/// `stride` apart. Requires that the row has these elements.
void spread_row(const channel_buffer& row, std::uint64_t first, std::uint64_t count, double* to,
                std::ptrdiff_t stride) noexcept;

} // namespace strata::detail
