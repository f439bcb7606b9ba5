#include <strata/data_selection.hpp>

#include "platform/strata/src/elements/dimensions.hpp"
#include "platform/strata/src/tree/set_node.hpp"

namespace strata {

data_selection::data_selection() noexcept = default;
data_selection::data_selection(const data_selection&) noexcept = default;
data_selection::data_selection(data_selection&&) noexcept = default;
data_selection& data_selection::operator=(const data_selection&) noexcept = default;
data_selection& data_selection::operator=(data_selection&&) noexcept = default;
data_selection::~data_selection() = default;

data_selection::operator bool() const noexcept {
    return content_ && content_->elements().extents().contain(box_);
}

data_shape data_selection::shape() const { return detail::shape_of(box_.extent, box_.rank); }

data_type data_selection::type() const noexcept {
    return content_ ? content_->type() : data_type::invalid;
}

bool data_selection::read_value(void* buffer, data_type requested) const {
    return *this && content_->elements().read(box_, buffer, requested);
}

bool data_selection::write_value(const void* buffer, data_type given) {
    return *this && content_->elements().write(box_, buffer, given);
}

} // namespace strata
