#include <strata/data_group.hpp>

#include "platform/strata/src/handles/access.hpp"
#include "platform/strata/src/tree/group_node.hpp"
#include "platform/strata/src/tree/store_failures.hpp"
#include "platform/strata/src/tree/tree_path.hpp"

namespace strata {

using detail::access;
using detail::counted_ptr;
using detail::find_group;
using detail::find_owner;

namespace {

detail::group_node& node_of(const counted_ptr<detail::group_node>& node) {
    if (!node)
        detail::throw_denotes_nothing("group");
    return *node;
}

detail::group_node* find_group_or_null(const counted_ptr<detail::group_node>& node,
                                       std::string_view path) noexcept {
    return node ? find_group(*node, path) : nullptr;
}

detail::set_entry* find_set(const counted_ptr<detail::group_node>& node,
                            std::string_view path) noexcept {
    if (!node)
        return nullptr;
    const auto [owner, name] = find_owner(*node, path);
    return owner ? owner->sets().find(name) : nullptr;
}

detail::attribute_node* find_attribute(const counted_ptr<detail::group_node>& node,
                                       std::string_view path) noexcept {
    if (!node)
        return nullptr;
    const auto [owner, name] = find_owner(*node, path);
    return owner ? owner->attributes().find(name) : nullptr;
}

} // namespace

data_group::data_group() noexcept = default;
data_group::data_group(const data_group&) noexcept = default;
data_group::data_group(data_group&&) noexcept = default;
data_group& data_group::operator=(const data_group&) noexcept = default;
data_group& data_group::operator=(data_group&&) noexcept = default;
data_group::~data_group() = default;

std::string data_group::name() const { return std::string{node_of(node_).name()}; }

bool data_group::exists_group(std::string_view name) const noexcept {
    return find_group_or_null(node_, name) != nullptr;
}

data_group data_group::retrieve_group(std::string_view name) const {
    auto* found = find_group_or_null(node_, name);
    if (!found)
        detail::throw_no_such_group(name);
    return access::handle(counted_ptr{found});
}

data_group data_group::create_group(std::string_view name) {
    return access::handle(detail::create_group_at(node_of(node_), name));
}

void data_group::delete_group(std::string_view name) {
    const auto [owner, last] = find_owner(node_of(node_), name);
    if (owner == node_.get() && last.empty())
        detail::throw_deletes_itself();
    if (!owner || !owner->remove_group(last))
        detail::throw_no_such_group(name);
}

bool data_group::exists_set(std::string_view name) const noexcept {
    return find_set(node_, name) != nullptr;
}

data_set data_group::retrieve_set(std::string_view name) const {
    auto* found = find_set(node_, name);
    if (!found)
        detail::throw_no_such_set(name);
    return access::handle(counted_ptr{found});
}

data_set data_group::create_set(std::string_view name, const data_shape& shape, data_type type) {
    detail::require_free_set_path(node_of(node_), name);
    counted_ptr content{new detail::set_content{shape, type}};
    return access::handle(detail::add_set_at(*node_, name, std::move(content)));
}

void data_group::delete_set(std::string_view name) {
    const auto [owner, last] = find_owner(node_of(node_), name);
    if (!owner || !owner->sets().remove(last))
        detail::throw_no_such_set(name);
}

bool data_group::exists_attribute(std::string_view name) const noexcept {
    return find_attribute(node_, name) != nullptr;
}

data_attribute data_group::retrieve_attribute(std::string_view name) const {
    return access::handle(counted_ptr{find_attribute(node_, name)});
}

data_attribute data_group::create_attribute(std::string_view name, const data_shape& shape,
                                            data_type type) {
    const auto [owner, last] = find_owner(node_of(node_), name);
    if (!owner)
        detail::throw_no_group_for(name);
    return access::handle(owner->attributes().create(last, shape, type));
}

void data_group::copy_attribute(const data_attribute& attribute) {
    const auto* source = access::node(attribute);
    if (!source)
        detail::throw_denotes_nothing("attribute");
    node_of(node_).attributes().copy(*source);
}

void data_group::delete_attribute(std::string_view name) {
    const auto [owner, last] = find_owner(node_of(node_), name);
    if (!owner)
        detail::throw_no_such_attribute(name);
    owner->attributes().remove(last);
}

std::vector<std::string> data_group::list_attributes_name() const {
    return node_of(node_).attributes().names();
}

std::vector<std::string> data_group::list_set_children_name() const {
    return node_of(node_).sets().names();
}

std::vector<std::string> data_group::list_group_children_name() const {
    return node_of(node_).groups().names();
}

bool data_group::create_hard_link_internal(const std::string& name, const void* target) {
    const auto* entry = target ? access::entry(*static_cast<const data_set*>(target)) : nullptr;
    if (!node_ || !entry)
        return false;
    const auto [owner, last] = find_owner(*node_, name);
    if (!owner || last.empty() || owner->sets().find(last) || owner->groups().find(last))
        return false;
    owner->sets().add(counted_ptr{new detail::set_entry{last, entry->content()}});
    return true;
}

} // namespace strata
