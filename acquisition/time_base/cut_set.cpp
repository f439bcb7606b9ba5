#include "acquisition/time_base/cut_set.hpp"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <utility>
#include <vector>

#include <strata/data_store.hpp>
#include <strata/plugin/channel_buffer.hpp>

#include "store/typed_access.hpp"

namespace mox {

namespace {

struct extents {
    std::uint64_t components;
    std::uint64_t channels;
    std::uint64_t samples;
};

extents extents_of(const strata::data_set& set) {
    const auto shape = set.shape(false);
    const auto& held = shape.dimensions();
    return {static_cast<std::uint64_t>(held.at(0)), static_cast<std::uint64_t>(held.at(1)),
            static_cast<std::uint64_t>(held.at(2))};
}

/// The kept samples of each component.
strata::channel_buffer cut_channel(const strata::channel_buffer& channel, const extents& held,
                                   sample_range kept) {
    auto result =
        strata::channel_buffer::allocate(channel.stored(), held.components * kept.count, 1).front();
    result.set_scaling(channel.offset(), channel.factor());
    const auto size = strata::element_size(channel.stored());
    for (std::uint64_t i = 0; i < held.components && kept.count > 0; ++i)
        std::memcpy(result.data() + i * kept.count * size,
                    channel.data() + (i * held.samples + kept.first) * size, kept.count * size);
    return result;
}

void cut_reliabilities(strata::data_set set, const char* name, sample_range kept) {
    if (!set.exists_attribute(name))
        return;
    const auto held = read_vector<float>(set.retrieve_attribute(name));
    // Short ones say nothing of the last samples.
    const auto first = std::min<std::size_t>(kept.first, held.size());
    const auto count = std::min<std::size_t>(kept.count, held.size() - first);
    const auto begin = held.begin() + static_cast<std::ptrdiff_t>(first);
    const std::vector<float> values(begin, begin + static_cast<std::ptrdiff_t>(count));
    set.delete_attribute(name);
    write_vector(set.create_attribute(name,
                                      strata::data_shape({static_cast<std::int64_t>(count)}, false),
                                      strata::data_type::float32),
                 values);
}

} // namespace

strata::data_set cut_of(const strata::data_set& set, sample_range kept, const char* reliabilities) {
    const auto held = extents_of(set);
    std::vector<strata::channel_buffer> channels;
    channels.reserve(held.channels);
    for (std::uint64_t i = 0; i < held.channels; ++i)
        channels.push_back(cut_channel(strata::share_channel(set, i), held, kept));
    const strata::data_store apart;
    auto result = strata::create_channel_set(apart.root(), "cut", held.components, kept.count,
                                             std::move(channels));
    for (const auto& name : set.list_attributes_name())
        result.copy_attribute(set.retrieve_attribute(name));
    cut_reliabilities(result, reliabilities, kept);
    return result;
}

} // namespace mox
