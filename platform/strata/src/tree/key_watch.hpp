#pragma once

#include <cstddef>
#include <string_view>
#include <utility>

#include <strata/detail/counted.hpp>

namespace strata::detail {

class set_index;

/// How the attributes of a set tell an index that one of them may be another than it has seen.
/// Index and set each keep it alive, so that either may go first.
class key_watch final : public counted {
  public:
    key_watch(set_index& index, std::size_t place) noexcept : index_(&index), place_(place) {}

    /// The attribute of this name was created or removed.
    void note(std::string_view name) noexcept;
    /// Any attribute may be another.
    void note() noexcept;

  private:
    friend class set_index;
    friend class watch_place;

    /// Another index watches the set from now on.
    void lose() noexcept;

    set_index* index_; // null when that one no longer cares
    std::size_t place_;
    bool is_noted_ = false; // stands in the index's chain
    bool is_lost_ = false;
    key_watch* next_noted_ = nullptr;
};

/// Where a list of attributes keeps its watch. It stays there when the content of the list is moved
/// away or becomes another, and that is noted.
class watch_place {
  public:
    watch_place() noexcept = default;
    watch_place(watch_place&& other) noexcept { other.note(); }
    watch_place& operator=(watch_place&& other) noexcept {
        note();
        other.note();
        return *this;
    }
    watch_place(const watch_place&) = delete;
    watch_place& operator=(const watch_place&) = delete;
    ~watch_place() = default;

    void set(counted_ptr<key_watch> watch) noexcept {
        if (watch_)
            watch_->lose();
        watch_ = std::move(watch);
    }
    /// The index that watches; null without one.
    [[nodiscard]] const set_index* index() const noexcept {
        return watch_ ? watch_->index_ : nullptr;
    }
    void note(std::string_view name) const noexcept {
        if (watch_)
            watch_->note(name);
    }

  private:
    void note() const noexcept {
        if (watch_)
            watch_->note();
    }

    counted_ptr<key_watch> watch_;
};

} // namespace strata::detail
