#pragma once

#include <cstring>
#include <utility>
#include <vector>

#include <strata/plugin/channel_buffer.hpp>

#include "tests/cpp/strata/support/values.hpp"

namespace strata_test {

/// One buffer for each of `channels`, filled.
template <typename Value>
std::vector<strata::channel_buffer> buffers(const std::vector<std::vector<Value>>& channels) {
    auto made = strata::channel_buffer::allocate(type_of<Value>(), channels.front().size(),
                                                 channels.size());
    for (std::size_t i = 0; i < channels.size(); ++i) {
        std::memcpy(made[i].data(), channels[i].data(), channels[i].size() * sizeof(Value));
    }
    return made;
}

template <typename Value> strata::channel_buffer buffer(const std::vector<Value>& elements) {
    return buffers<Value>({elements}).front();
}

/// A set of one channel that shares the elements of a channel of another.
inline strata::data_set share_as(strata::data_group group, const std::string& name,
                                 const strata::data_set& set, std::uint64_t channel) {
    const auto dimensions = set.shape(false).dimensions();
    std::vector shared{strata::share_channel(set, channel)};
    return strata::create_channel_set(std::move(group), name,
                                      static_cast<std::uint64_t>(dimensions[0]),
                                      static_cast<std::uint64_t>(dimensions[2]), std::move(shared));
}

} // namespace strata_test
