#include "platform/strata/src/tree/attribute_node.hpp"

#include <cstring>
#include <utility>

#include "platform/strata/src/elements/convert_elements.hpp"
#include "platform/strata/src/elements/text_copies.hpp"

namespace strata::detail {

attribute_node::attribute_node(std::string_view name, const data_shape& shape, data_type type)
    : name_(name), type_(type) {
    const dimensions extents{shape};
    if (extents.rank() > 0)
        elements_ = std::make_unique<element_array>(type, element_layout{extents});
}

attribute_node::attribute_node(std::string_view name, element_array elements)
    : name_(name), type_(elements.type()),
      elements_(std::make_unique<element_array>(std::move(elements))) {}

attribute_node::attribute_node(std::string_view name, element_array elements, data_type type)
    : name_(name), type_(type), elements_(std::make_unique<element_array>(std::move(elements))) {}

counted_ptr<attribute_node> attribute_node::copy() const {
    counted_ptr<attribute_node> made{new attribute_node{name_, data_shape{}, type_}};
    made->number_ = number_;
    made->text_ = text_;
    if (elements_)
        made->elements_ = std::make_unique<element_array>(*elements_);
    return made;
}

data_shape attribute_node::shape() const {
    return elements_ ? elements_->extents().shape() : data_shape{};
}

bool attribute_node::read(void* buffer, data_type requested) const {
    if (elements_)
        return elements_->read(elements_->extents().whole(), buffer, requested);
    if (const auto convert = find_converter(type_, requested)) {
        convert(number_.data(), static_cast<std::byte*>(buffer), 1);
        return true;
    }
    if (element_kind(type_) != data_type::string || element_kind(requested) != data_type::string)
        return false;
    *static_cast<const char**>(buffer) = copy_text(text_);
    return true;
}

bool attribute_node::write(const void* buffer, data_type given) {
    const bool is_written = write_value(buffer, given);
    if (is_written && watch_)
        watch_->note();
    return is_written;
}

bool attribute_node::write_value(const void* buffer, data_type given) {
    if (elements_)
        return elements_->write(elements_->extents().whole(), buffer, given);
    if (const auto convert = find_converter(given, type_)) {
        convert(static_cast<const std::byte*>(buffer), number_.data(), 1);
        return true;
    }
    if (element_kind(type_) != data_type::string || element_kind(given) != data_type::string)
        return false;
    text_ = text_at(buffer, 0);
    return true;
}

} // namespace strata::detail
