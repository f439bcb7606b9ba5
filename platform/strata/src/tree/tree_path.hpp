#pragma once

#include <string_view>

namespace strata::detail {

class group_node;

/// Separates the components of a path.
inline constexpr char path_separator = '/';

/// `path` without the one separator that may stand at either end.
[[nodiscard]] std::string_view trim_path(std::string_view path) noexcept;

/// Whether `name` can name one node.
[[nodiscard]] bool is_component(std::string_view name) noexcept;

/// Takes the first component, which may be empty, off a trimmed path.
[[nodiscard]] std::string_view take_component(std::string_view& path) noexcept;

/// The group at `path` relative to `from`; null when there is none. The empty path is `from`
/// itself.
[[nodiscard]] group_node* find_group(group_node& from, std::string_view path) noexcept;

/// Where a path's last component is looked up.
struct owner_and_name {
    /// The group that the components before the last denote; null when there is none.
    group_node* owner = nullptr;
    std::string_view name; ///< the last component; may be empty
};

/// Splits `path`, relative to `from`.
[[nodiscard]] owner_and_name find_owner(group_node& from, std::string_view path) noexcept;

} // namespace strata::detail
