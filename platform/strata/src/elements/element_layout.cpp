#include "platform/strata/src/elements/element_layout.hpp"

namespace strata::detail {

namespace {

// Twice what the 16-bit channel counts of file formats can say.
constexpr std::uint64_t most_channel_rows = std::uint64_t{1} << 17U;

} // namespace

element_layout::element_layout(const dimensions& extents, std::size_t axis) noexcept
    : extents_(extents), axis_(axis) {
    for (auto i = extents_.rank(); i-- > 0;) {
        if (i == axis_)
            continue;
        strides_[i] = row_elements_;
        row_elements_ *= extents_[i];
    }
}

element_layout element_layout::of_set(const dimensions& extents) noexcept {
    constexpr std::size_t channel_dimension = 1;
    if (extents.rank() != 3 || extents[channel_dimension] > most_channel_rows)
        return element_layout{extents};
    return along(extents, channel_dimension);
}

} // namespace strata::detail
