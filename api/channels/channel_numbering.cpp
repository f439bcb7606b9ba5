#include "api/channels/channel_numbering.hpp"

#include <algorithm>
#include <limits>

#include <strata/access/set_count.hpp>

#include "acquisition/channels/channels.hpp"
#include "acquisition/time_base/resize_channels.hpp"
#include "schema/channel_names.hpp"
#include "schema/names.hpp"
#include "store/path_helpers.hpp"
#include "store/store_log.hpp"
#include "store/typed_access.hpp"

namespace mox {

namespace attribute = schema::attribute;

void remove_channel(const strata::data_group& holder, const strata::data_set& set,
                    const std::vector<strata::data_group>& groups) {
    constexpr auto without_index = std::numeric_limits<std::int32_t>::max(); // leaves no gap behind
    const auto removed =
        read<std::int32_t>(set.retrieve_attribute(attribute::relative_set_index), without_index);
    delete_set(holder, set);
    for (const auto& group : groups) {
        for (const auto& other : sets_of(group)) {
            auto index = other.retrieve_attribute(attribute::relative_set_index);
            if (!index) {
                log_store_failure(store_failure::read_attribute);
                continue;
            }
            const auto value = read<std::int32_t>(index);
            if (value > removed)
                write(index, value - 1);
        }
    }
}

void shrink_channels(const std::vector<strata::data_group>& groups, std::int32_t count,
                     std::int32_t wanted) {
    // Kept: count - wanted channels stay.
    const auto first_deleted =
        static_cast<std::uint32_t>(count) - static_cast<std::uint32_t>(wanted);
    for (auto group : groups) {
        for (const auto& set : sets_of(group)) {
            const auto index =
                read<std::int32_t>(set.retrieve_attribute(attribute::relative_set_index));
            if (static_cast<std::uint32_t>(index) >= first_deleted)
                group.delete_set(set.name());
        }
    }
}

std::string unused_channel_names::next(std::int32_t index) {
    number_ = std::max(number_, index);
    auto name = schema::unnamed_channel(number_);
    while (group_.exists_set(name))
        name = schema::unnamed_channel(++number_);
    ++number_;
    return name;
}

void require_memory_for_channels(double channels, double elements) {
    require_memory(channels * (channel_overhead + elements));
}

std::int32_t channel_count(const std::vector<strata::data_group>& groups) {
    std::size_t count = 0;
    for (const auto& group : groups)
        count += strata::set_count(group);
    return static_cast<std::int32_t>(count);
}

} // namespace mox
