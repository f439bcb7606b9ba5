#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "platform/strata/src/tree/node_name.hpp"

namespace strata::detail {

class group_node;

/// The group that the last path from a group led to: whoever reads a store asks about one place
/// several times in a row. Holds no reference; what it remembers is forgotten as soon as any group
/// of any tree is removed, which alone can end a path.
class recent_path {
  public:
    /// The group at `path`, or null when it is not remembered.
    [[nodiscard]] group_node* find(std::string_view path) const noexcept {
        return group_ && removals_ == all_removals.load(std::memory_order_relaxed) &&
                       same_name({text_.data(), size_}, path)
                   ? group_
                   : nullptr;
    }

    /// Paths that are too long are not remembered.
    void remember(std::string_view path, group_node* group) noexcept {
        if (path.size() > text_.size())
            return;
        std::memcpy(text_.data(), path.data(), path.size());
        size_ = static_cast<std::uint8_t>(path.size());
        group_ = group;
        removals_ = all_removals.load(std::memory_order_relaxed);
    }

    /// To be called when a group was removed from its parent.
    static void forget_all() noexcept { all_removals.fetch_add(1, std::memory_order_relaxed); }

  private:
    inline static std::atomic<std::uint64_t> all_removals = 0;

    std::array<char, 39> text_{};
    std::uint8_t size_ = 0;
    group_node* group_ = nullptr;
    std::uint64_t removals_ = 0;
};

} // namespace strata::detail
