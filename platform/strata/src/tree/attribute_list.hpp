#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/strata/src/tree/attribute_node.hpp"
#include "platform/strata/src/tree/key_watch.hpp"
#include "platform/strata/src/tree/named_list.hpp"

namespace strata::detail {

/// The attributes of a group or of a set. Names are taken as they are, not as paths.
class attribute_list {
  public:
    [[nodiscard]] attribute_node* find(std::string_view name) const noexcept {
        return nodes_.find(name);
    }

    /// Throws store_error when the name is taken, empty or contains a separator.
    counted_ptr<attribute_node> create(std::string_view name, const data_shape& shape,
                                       data_type type);
    counted_ptr<attribute_node> create(std::string_view name, element_array elements);

    /// Adds a node. Requires that there is none of its name.
    counted_ptr<attribute_node> add(counted_ptr<attribute_node> node);

    /// Adds a copy, in the place of an attribute of that name if there is one.
    void copy(const attribute_node& attribute);

    /// Copies of all attributes, in their order. Throws std::bad_alloc.
    [[nodiscard]] attribute_list copy() const;

    /// Throws store_error when there is no such attribute.
    void remove(std::string_view name);

    /// Tells `watch`, in the place of another one, of every attribute that is created or removed
    /// from now on.
    void watch(counted_ptr<key_watch> watch) noexcept { watch_.set(std::move(watch)); }
    /// The index that is told; null without one.
    [[nodiscard]] const set_index* watching_index() const noexcept { return watch_.index(); }

    [[nodiscard]] std::size_t count() const noexcept { return nodes_.count(); }
    /// As named_list::for_each.
    template <typename Visit> void for_each(Visit visit) const { nodes_.for_each(visit); }
    [[nodiscard]] std::vector<std::string> names() const { return nodes_.names(); }

  private:
    void require_free(std::string_view name) const;

    named_list<attribute_node> nodes_;
    watch_place watch_;
};

} // namespace strata::detail
