#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <strata/data_attribute.hpp>
#include <strata/data_set.hpp>
#include <strata/data_shape.hpp>
#include <strata/data_type.hpp>
#include <strata/detail/counted.hpp>
#include <strata/export.hpp>

namespace strata {

namespace detail {
class group_node;
struct access;
} // namespace detail

/// A handle on a named node of the tree, which holds groups, data sets and attributes. Copies
/// denote the same node.
///
/// Names given to members are paths relative to the group, components separated by "/" (one at
/// either end is ignored); the empty path denotes the group itself where a group is asked for.
/// Attributes: the components before the last name groups. A group and a set of one parent never
/// share a name. All lists are in order of creation.
class STRATA_EXPORT data_group {
  public:
    /// Denotes nothing; only assignment and destruction are allowed.
    data_group() noexcept;
    data_group(const data_group&) noexcept;
    data_group(data_group&&) noexcept;
    data_group& operator=(const data_group&) noexcept;
    data_group& operator=(data_group&&) noexcept;
    ~data_group();

    /// The last component of the group's path; empty for the root.
    [[nodiscard]] std::string name() const;

    [[nodiscard]] bool exists_group(std::string_view name) const noexcept;
    /// Throws store_error when there is no such group, as do all members that retrieve or delete,
    /// except where noted.
    [[nodiscard]] data_group retrieve_group(std::string_view name) const;
    /// Creates the group and those on the way to it. Throws store_error when it exists.
    data_group create_group(std::string_view name);
    /// Removes the group and all below it. Handles into it stay usable but are no longer part of
    /// the tree.
    void delete_group(std::string_view name);

    [[nodiscard]] bool exists_set(std::string_view name) const noexcept;
    [[nodiscard]] data_set retrieve_set(std::string_view name) const;
    /// Creates a set whose elements are zero (texts empty), in a group that exists. A
    /// three-dimensional set is held as one buffer for each index of its middle dimension, the
    /// channels.
    data_set create_set(std::string_view name, const data_shape& shape, data_type type);
    void delete_set(std::string_view name);

    [[nodiscard]] bool exists_attribute(std::string_view name) const noexcept;
    /// Denotes nothing when there is no such attribute.
    [[nodiscard]] data_attribute retrieve_attribute(std::string_view name) const;
    data_attribute create_attribute(std::string_view name, const data_shape& shape, data_type type);
    /// Adds a copy (name, type, shape, value); replaces an attribute of that name.
    void copy_attribute(const data_attribute& attribute);
    void delete_attribute(std::string_view name);

    [[nodiscard]] std::vector<std::string> list_attributes_name() const;
    [[nodiscard]] std::vector<std::string> list_set_children_name() const;
    [[nodiscard]] std::vector<std::string> list_group_children_name() const;

    /// Makes the set that `target` (a `const data_set*`) denotes also known as `name`: one set with
    /// two names. False when the name is taken, `target` is null or denotes nothing.
    bool create_hard_link_internal(const std::string& name, const void* target);

  private:
    friend struct detail::access;
    friend class data_store;
    detail::counted_ptr<detail::group_node> node_;
};

} // namespace strata
