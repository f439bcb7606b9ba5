#include <algorithm>
#include <utility>

#include "platform/strata/src/elements/channel_rows.hpp"
#include "platform/strata/src/elements/decode_row.hpp"
#include "platform/strata/src/elements/element_array.hpp"
#include "platform/strata/src/elements/number_types.hpp"
#include "platform/strata/src/elements/run_walk.hpp"

namespace strata::detail {

namespace {

/// What both extents have in common; everything when their ranks differ, where the order of
/// elements decides.
std::pair<element_box, element_box> common_boxes(const dimensions& from, const dimensions& to) {
    auto source = from.whole();
    auto target = to.whole();
    if (from.rank() != to.rank())
        return {source, target};
    for (std::size_t i = 0; i < from.rank(); ++i) {
        source.extent[i] = target.extent[i] = std::min(from[i], to[i]);
    }
    return {source, target};
}

/// Calls `copy(source, target)` with pairs of equally long runs, until either array ends.
template <typename Copy>
void for_each_common_run(const element_layout& from, const element_layout& to, Copy copy) {
    const auto [source_box, target_box] = common_boxes(from.extents(), to.extents());
    run_walk source_walk{from, source_box};
    run_walk target_walk{to, target_box};
    element_run source;
    element_run target;
    while ((source.count > 0 || source_walk.next(source)) &&
           (target.count > 0 || target_walk.next(target))) {
        const auto count = std::min(source.count, target.count);
        copy(element_run{source.row, source.first, count},
             element_run{target.row, target.first, count});
        source.first += count;
        target.first += count;
        source.count -= count;
        target.count -= count;
    }
}

bool differ_in_rows_only(const element_layout& left, const element_layout& right) noexcept {
    if (!left.has_axis() || left.axis() != right.axis() ||
        left.extents().rank() != right.extents().rank())
        return false;
    for (std::size_t i = 0; i < left.extents().rank(); ++i) {
        if (i != left.axis() && left.extents()[i] != right.extents()[i])
            return false;
    }
    return true;
}

} // namespace

element_array element_array::resized(const element_layout& layout) const {
    if (type_ == data_type::string) {
        element_array target{type_, layout};
        for_each_common_run(layout_, layout, [&](const element_run& from, const element_run& to) {
            for (std::uint64_t i = 0; i < from.count && from.first + i < texts_.size(); ++i) {
                if (to.first + i >= target.texts_.size())
                    target.texts_.resize(to.first + i + 1);
                target.texts_[to.first + i] = texts_[from.first + i];
            }
        });
        return target;
    }
    if (is_number(type_) && differ_in_rows_only(layout_, layout)) {
        const auto kept = static_cast<std::ptrdiff_t>(
            std::min(rows_.size(), static_cast<std::size_t>(layout.rows())));
        std::vector<channel_buffer> rows{rows_.begin(), rows_.begin() + kept};
        auto added = make_rows(type_, layout.row_elements(), layout.rows() - rows.size(),
                               initial_content::zero);
        rows.insert(rows.end(), added.begin(), added.end());
        return {type_, layout, std::move(rows)};
    }
    element_array target{type_, layout};
    if (rows_.empty() || target.rows_.empty())
        return target;
    for_each_common_run(layout_, layout, [&](const element_run& from, const element_run& to) {
        auto* place = target.rows_[to.row].data() + to.first * element_size(type_);
        decode_row(rows_[from.row], from.first, from.count, place, type_);
    });
    return target;
}

} // namespace strata::detail
