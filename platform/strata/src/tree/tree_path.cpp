#include "platform/strata/src/tree/tree_path.hpp"

#include "platform/strata/src/tree/group_node.hpp"

namespace strata::detail {

namespace {

group_node* walk(group_node& from, std::string_view path) noexcept {
    auto* node = &from;
    for (;;) {
        const auto end = path.find(path_separator);
        node = node->groups().find(path.substr(0, end));
        if (!node || end == std::string_view::npos)
            return node;
        path.remove_prefix(end + 1);
    }
}

/// As find_group, for a trimmed path with one component at least.
group_node* descend(group_node& from, std::string_view path) noexcept {
    if (auto* remembered = from.recent().find(path))
        return remembered;
    auto* node = walk(from, path);
    if (node)
        from.recent().remember(path, node);
    return node;
}

} // namespace

std::string_view trim_path(std::string_view path) noexcept {
    if (path.starts_with(path_separator))
        path.remove_prefix(1);
    if (path.ends_with(path_separator))
        path.remove_suffix(1);
    return path;
}

bool is_component(std::string_view name) noexcept {
    return !name.empty() && name.find(path_separator) == std::string_view::npos;
}

std::string_view take_component(std::string_view& path) noexcept {
    const auto component = path.substr(0, path.find(path_separator));
    path.remove_prefix(component.size() < path.size() ? component.size() + 1 : component.size());
    return component;
}

group_node* find_group(group_node& from, std::string_view path) noexcept {
    path = trim_path(path);
    return path.empty() ? &from : descend(from, path);
}

owner_and_name find_owner(group_node& from, std::string_view path) noexcept {
    path = trim_path(path);
    const auto last = path.rfind(path_separator);
    if (last == std::string_view::npos)
        return {&from, path};
    return {descend(from, path.substr(0, last)), path.substr(last + 1)};
}

} // namespace strata::detail
