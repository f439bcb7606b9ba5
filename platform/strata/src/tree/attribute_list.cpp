#include "platform/strata/src/tree/attribute_list.hpp"

#include <utility>

#include "platform/strata/src/tree/store_failures.hpp"
#include "platform/strata/src/tree/tree_path.hpp"

namespace strata::detail {

void attribute_list::require_free(std::string_view name) const {
    if (!is_component(name))
        throw_bad_path(name);
    if (nodes_.find(name))
        throw_attribute_exists(name);
}

counted_ptr<attribute_node> attribute_list::add(counted_ptr<attribute_node> node) {
    nodes_.add(node);
    watch_.note(node->name());
    return node;
}

counted_ptr<attribute_node> attribute_list::create(std::string_view name, const data_shape& shape,
                                                   data_type type) {
    require_free(name);
    return add(counted_ptr{new attribute_node{name, shape, type}});
}

counted_ptr<attribute_node> attribute_list::create(std::string_view name, element_array elements) {
    require_free(name);
    return add(counted_ptr{new attribute_node{name, std::move(elements)}});
}

void attribute_list::copy(const attribute_node& attribute) {
    auto node = attribute.copy();
    if (nodes_.find(attribute.name())) {
        nodes_.replace(std::move(node));
    } else {
        nodes_.add(std::move(node));
    }
    watch_.note(attribute.name());
}

attribute_list attribute_list::copy() const {
    attribute_list made;
    nodes_.for_each([&](const attribute_node& node) { made.nodes_.add(node.copy()); });
    return made;
}

void attribute_list::remove(std::string_view name) {
    if (!nodes_.remove(name))
        throw_no_such_attribute(name);
    watch_.note(name);
}

} // namespace strata::detail
