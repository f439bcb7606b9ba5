#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include <strata/data_type.hpp>
#include <strata/plugin/channel_buffer.hpp>

#include "platform/strata/src/elements/memory_block.hpp"

namespace strata::detail {

/// `rows` buffers of `elements` elements in one block of memory, which is freed with the last of
/// them. Throws std::bad_alloc.
[[nodiscard]] std::vector<channel_buffer> make_rows(data_type stored, std::uint64_t elements,
                                                    std::uint64_t rows, initial_content content);

/// Whether nobody else holds the elements, so that they may be written to.
[[nodiscard]] bool owned_alone(const channel_buffer& row) noexcept;

/// Makes `row` end after `count` elements. Requires that its memory has room for as many.
void set_count(channel_buffer& row, std::uint64_t count) noexcept;

/// Whether elements are not values yet.
[[nodiscard]] inline bool is_scaled(const channel_buffer& row) noexcept {
    return row.offset() != 0.0 || row.factor() != 1.0;
}

} // namespace strata::detail
