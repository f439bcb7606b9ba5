#include "platform/strata/src/tree/set_node.hpp"

#include "platform/strata/src/elements/number_types.hpp"

namespace strata::detail {

namespace {

element_layout layout_of(data_type type, const dimensions& extents) noexcept {
    return is_number(type) ? element_layout::of_set(extents) : element_layout{extents};
}

} // namespace

set_content::set_content(const data_shape& shape, data_type type)
    : type_(type), elements_(type, layout_of(type, dimensions{shape})) {}

void set_content::resize(const dimensions& extents) {
    if (extents == elements_.extents())
        return;
    elements_ = elements_.resized(layout_of(type_, extents));
}

} // namespace strata::detail
