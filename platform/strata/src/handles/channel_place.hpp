#pragma once

#include <cstdint>

#include <strata/data_set.hpp>
#include <strata/plugin/channel_buffer.hpp>

namespace strata::detail {

/// Where one channel of a set lies.
struct channel_place {
    /// The row that holds it; null when there is no such channel.
    const channel_buffer* row = nullptr;
    std::uint64_t first = 0;      ///< element of the row that is the first component's first sample
    std::uint64_t components = 0; ///< components of the channel
    std::uint64_t step = 0;       ///< elements from one component to the next
    std::uint64_t samples = 0;    ///< samples of each component
};

/// The channel `channel` of a set of numbers whose dimensions are components, channels and samples,
/// or samples alone.
[[nodiscard]] channel_place find_channel(const data_set& set, std::uint64_t channel) noexcept;

} // namespace strata::detail
