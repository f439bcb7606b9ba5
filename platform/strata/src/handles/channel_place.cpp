#include "platform/strata/src/handles/channel_place.hpp"

#include "platform/strata/src/elements/number_types.hpp"
#include "platform/strata/src/handles/access.hpp"

namespace strata::detail {

channel_place find_channel(const data_set& set, std::uint64_t channel) noexcept {
    const auto* entry = access::entry(set);
    if (!entry || !is_number(entry->content()->type()))
        return {};
    const auto& array = entry->content()->elements();
    const auto& extents = array.extents();
    const auto& layout = array.layout();

    if (extents.rank() == 1 && channel == 0)
        return {array.rows().data(), 0, 1, 0, extents[0]};
    if (extents.rank() != 3 || channel >= extents[1])
        return {};
    if (layout.has_axis())
        return {&array.rows()[channel], 0, extents[0], layout.stride(0), extents[2]};
    return {array.rows().data(), channel * layout.stride(1), extents[0], layout.stride(0),
            extents[2]};
}

} // namespace strata::detail
