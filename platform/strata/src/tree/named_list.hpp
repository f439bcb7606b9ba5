#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <strata/detail/counted.hpp>

#include "platform/strata/src/tree/node_name.hpp"

namespace strata::detail {

/// Nodes with different names in the order in which they were added. Finding, adding and removing
/// one takes constant time however many there are, and finding one takes no memory. `Node` has a
/// member `name()` that never changes.
template <typename Node> class named_list {
  public:
    /// The node of that name, or null.
    [[nodiscard]] Node* find(std::string_view name) const noexcept {
        const auto slot = find_slot(name);
        return slot == no_slot ? nullptr : nodes_[slot].get();
    }

    /// Adds a node, last. Requires that there is none of its name. Throws std::bad_alloc; nothing
    /// has changed then.
    void add(counted_ptr<Node> node) {
        make_room();
        const auto hash = node_name_hash(node->name());
        enter(hash, nodes_.size());
        nodes_.push_back(std::move(node));
        ++count_;
    }

    /// Puts `node` in the place of the one that has its name. Requires that there is one.
    void replace(counted_ptr<Node> node) noexcept {
        auto& place = nodes_[find_slot(node->name())];
        place = std::move(node);
        ++layout_;
    }

    /// False when there is no node of that name.
    bool remove(std::string_view name) noexcept {
        const auto slot = find_slot(name);
        if (slot == no_slot)
            return false;
        nodes_[slot] = {}; // the place is left empty until the next making of room
        --count_;
        return true;
    }

    [[nodiscard]] std::size_t count() const noexcept { return count_; }

    /// Nodes lie in places, in the order in which they were added; a place whose node was removed
    /// stays empty. As long as `layout` is the same, no place has got another node.
    [[nodiscard]] std::size_t places() const noexcept { return nodes_.size(); }
    [[nodiscard]] std::size_t layout() const noexcept { return layout_; }
    /// The node of a place, or null where it was removed.
    [[nodiscard]] Node* at(std::size_t place) const noexcept { return nodes_[place].get(); }

    /// Calls `visit` with each node, in order of addition. Nothing may be added or removed
    /// meanwhile.
    template <typename Visit> void for_each(Visit visit) const {
        for (const auto& node : nodes_) {
            if (node)
                visit(*node);
        }
    }

    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> list;
        list.reserve(count_);
        for_each([&](const Node& node) { list.emplace_back(node.name()); });
        return list;
    }

  private:
    struct entry {
        std::uint32_t hash = 0;
        std::uint32_t place = 0; // index in nodes_, plus 1; 0 where the entry is free
    };
    static constexpr std::size_t no_slot = static_cast<std::size_t>(-1);

    [[nodiscard]] std::size_t find_slot(std::string_view name) const noexcept {
        if (count_ == 0)
            return no_slot;
        const auto hash = node_name_hash(name);
        const auto mask = table_.size() - 1;
        for (std::size_t i = hash & mask; table_[i].place != 0; i = (i + 1) & mask) {
            if (table_[i].hash != hash)
                continue;
            const auto slot = static_cast<std::size_t>(table_[i].place - 1);
            if (nodes_[slot] && same_name(nodes_[slot]->name(), name))
                return slot;
        }
        return no_slot;
    }

    void enter(std::uint32_t hash, std::size_t slot) noexcept {
        const auto mask = table_.size() - 1;
        auto i = hash & mask;
        while (table_[i].place != 0)
            i = (i + 1) & mask;
        table_[i] = {hash, static_cast<std::uint32_t>(slot + 1)};
    }

    /// Makes room for one more node. Half of the table's entries at least stay free, so that
    /// searches end soon; removed nodes' entries are dropped with the first growth, which they
    /// bring nearer like nodes that stayed.
    void make_room() {
        if (2 * (nodes_.size() + 1) <= table_.size())
            return;
        std::vector<entry> table(std::bit_ceil(3 * (count_ + 1) + 5));
        nodes_.reserve(table.size() / 2);
        std::erase_if(nodes_, [](const auto& node) { return !node; });
        ++layout_;
        table_ = std::move(table);
        for (std::size_t slot = 0; slot < nodes_.size(); ++slot)
            enter(node_name_hash(nodes_[slot]->name()), slot);
    }

    std::vector<counted_ptr<Node>> nodes_; // in order of addition; null where a node was removed
    std::vector<entry> table_;             // by hash, collisions in the next entries
    std::size_t count_ = 0;                // nodes that are not null
    std::size_t layout_ = 0;
};

} // namespace strata::detail
