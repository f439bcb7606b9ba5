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

counted_ptr<set_content> set_content::copy() const {
    counted_ptr made{new set_content{elements_}};
    made->type_ = type_;
    made->attributes_ = attributes_.copy();
    return made;
}

void set_content::exchange(set_content& other) noexcept {
    std::swap(type_, other.type_);
    std::swap(elements_, other.elements_);
    std::swap(attributes_, other.attributes_);
}

void set_content::resize(const dimensions& extents) {
    if (extents == elements_.extents())
        return;
    elements_ = elements_.resized(layout_of(type_, extents));
}

} // namespace strata::detail
