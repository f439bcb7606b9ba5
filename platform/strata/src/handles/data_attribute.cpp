#include <strata/data_attribute.hpp>

#include "platform/strata/src/tree/attribute_node.hpp"

namespace strata {

data_attribute::data_attribute() noexcept = default;
data_attribute::data_attribute(const data_attribute&) noexcept = default;
data_attribute::data_attribute(data_attribute&&) noexcept = default;
data_attribute& data_attribute::operator=(const data_attribute&) noexcept = default;
data_attribute& data_attribute::operator=(data_attribute&&) noexcept = default;
data_attribute::~data_attribute() = default;

data_attribute::operator bool() const noexcept { return static_cast<bool>(node_); }

std::string data_attribute::name() const {
    return node_ ? std::string{node_->name()} : std::string{};
}

data_shape data_attribute::shape() const { return node_ ? node_->shape() : data_shape{}; }

data_type data_attribute::type() const noexcept {
    return node_ ? node_->type() : data_type::invalid;
}

bool data_attribute::read_value(void* buffer, data_type requested) const {
    return node_ && node_->read(buffer, requested);
}

bool data_attribute::write_value(const void* buffer, data_type given) {
    return node_ && node_->write(buffer, given);
}

void data_attribute::write(const char* text) {
    // A single text: an attribute with dimensions holds elements.
    if (!node_ || node_->elements() || element_kind(node_->type()) != data_type::string)
        return;
    static_cast<void>(node_->write(static_cast<const void*>(&text), data_type::string));
}

} // namespace strata
