#include "platform/strata/src/tree/group_node.hpp"

#include <utility>

#include "platform/strata/src/tree/store_failures.hpp"
#include "platform/strata/src/tree/tree_path.hpp"

namespace strata::detail {

namespace {

/// Number of components of a trimmed path; throws when one is empty.
std::size_t count_components(std::string_view path, std::string_view whole_path) {
    std::size_t count = 0;
    for (bool more = true; more; ++count) {
        more = path.find(path_separator) != std::string_view::npos;
        if (take_component(path).empty())
            throw_bad_path(whole_path);
    }
    return count;
}

} // namespace

counted_ptr<group_node> create_group_at(group_node& from, std::string_view path) {
    auto rest = trim_path(path);
    if (rest.empty())
        throw_group_exists(path);

    auto remaining = count_components(rest, path);
    auto* parent = &from;
    auto name = take_component(rest);
    while (auto* child = parent->groups().find(name)) {
        if (--remaining == 0)
            throw_group_exists(path);
        parent = child;
        name = take_component(rest);
    }
    if (parent->sets().find(name))
        throw_set_exists(name);
    if (parent->depth() + remaining > maximum_depth)
        throw_too_deep(path);

    // What is missing is made apart and joined to the tree by one step at the end.
    const counted_ptr top{new group_node{name, parent->depth() + 1}};
    auto last = top;
    while (--remaining > 0) {
        const counted_ptr child{new group_node{take_component(rest), last->depth() + 1}};
        last->groups().add(child);
        last = child;
    }
    parent->groups().add(top);
    return last;
}

void require_free_set_path(group_node& from, std::string_view path) {
    const auto [owner, name] = find_owner(from, path);
    if (!owner)
        throw_no_group_for(path);
    if (name.empty())
        throw_bad_path(path);
    if (owner->sets().find(name))
        throw_set_exists(path);
    if (owner->groups().find(name))
        throw_group_exists(path);
}

counted_ptr<set_entry> add_set_at(group_node& from, std::string_view path,
                                  counted_ptr<set_content> content) {
    require_free_set_path(from, path);
    const auto [owner, name] = find_owner(from, path);
    counted_ptr entry{new set_entry{name, std::move(content)}};
    owner->sets().add(entry);
    return entry;
}

} // namespace strata::detail
