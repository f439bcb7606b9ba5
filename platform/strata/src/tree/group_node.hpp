#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include <strata/detail/counted.hpp>

#include "platform/strata/src/tree/attribute_list.hpp"
#include "platform/strata/src/tree/named_list.hpp"
#include "platform/strata/src/tree/recent_path.hpp"
#include "platform/strata/src/tree/set_index.hpp"
#include "platform/strata/src/tree/set_node.hpp"

namespace strata::detail {

/// Levels of groups below a root. Trees are destroyed by recursion, which must not exhaust the
/// stack.
inline constexpr std::size_t maximum_depth = 100;

/// A group. A child group and a data set never share a name.
class group_node final : public counted {
  public:
    group_node(std::string_view name, std::size_t depth) : name_(name), depth_(depth) {}

    [[nodiscard]] std::string_view name() const noexcept { return name_; }
    [[nodiscard]] std::size_t depth() const noexcept { return depth_; }
    /// To look groups up and add some; remove_group removes them.
    [[nodiscard]] named_list<group_node>& groups() noexcept { return groups_; }
    [[nodiscard]] const named_list<group_node>& groups() const noexcept { return groups_; }
    [[nodiscard]] named_list<set_entry>& sets() noexcept { return sets_; }
    [[nodiscard]] const named_list<set_entry>& sets() const noexcept { return sets_; }
    [[nodiscard]] attribute_list& attributes() noexcept { return attributes_; }
    [[nodiscard]] const attribute_list& attributes() const noexcept { return attributes_; }
    [[nodiscard]] recent_path& recent() noexcept { return recent_; }
    /// Of the sets. Throws std::bad_alloc.
    [[nodiscard]] set_index& index() {
        if (!index_)
            index_ = std::make_unique<set_index>();
        return *index_;
    }

    /// Removes a child group; false when there is none of that name.
    bool remove_group(std::string_view name) noexcept {
        if (!groups_.remove(name))
            return false;
        recent_path::forget_all();
        return true;
    }

  private:
    std::string name_;
    std::size_t depth_; // groups above this one
    named_list<group_node> groups_;
    named_list<set_entry> sets_;
    attribute_list attributes_;
    recent_path recent_;
    std::unique_ptr<set_index> index_; // once somebody has looked for a set
};

/// Creates the group at `path` and those on the way. Throws store_error when it exists or cannot
/// be; nothing has changed then.
counted_ptr<group_node> create_group_at(group_node& from, std::string_view path);

/// Adds a data set of this content at `path`. Throws store_error when its group is missing or the
/// name is taken.
counted_ptr<set_entry> add_set_at(group_node& from, std::string_view path,
                                  counted_ptr<set_content> content);

/// Throws what add_set_at would, before anything is made for it.
void require_free_set_path(group_node& from, std::string_view path);

} // namespace strata::detail
