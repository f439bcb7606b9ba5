#pragma once

#include <cstdint>
#include <utility>

#include <strata/export.hpp>

namespace strata::detail {

/// Base of the store's nodes, which live as long as a handle or a parent refers to them.
/// The count is not atomic: one thread at a time may use a store, which the interpreter lock
/// guarantees to the module.
class STRATA_EXPORT counted {
  public:
    counted() noexcept = default;
    counted(const counted&) = delete;
    counted& operator=(const counted&) = delete;
    virtual ~counted();

    void retain() noexcept { ++references_; }
    void release() noexcept {
        if (--references_ == 0)
            delete this;
    }
    [[nodiscard]] std::uint32_t references() const noexcept { return references_; }

  private:
    std::uint32_t references_ = 0;
};

// NOLINTBEGIN(clang-analyzer-cplusplus.NewDelete): the analyzer does not follow the count
/// Shared ownership of a node. Members that touch the node need its complete type.
template <typename Node> class counted_ptr {
  public:
    counted_ptr() noexcept = default;
    explicit counted_ptr(Node* node) noexcept : node_(node) {
        if (node_)
            node_->retain();
    }
    counted_ptr(const counted_ptr& other) noexcept : counted_ptr(other.node_) {}
    counted_ptr(counted_ptr&& other) noexcept : node_(std::exchange(other.node_, nullptr)) {}
    counted_ptr& operator=(counted_ptr other) noexcept {
        std::swap(node_, other.node_);
        return *this;
    }
    ~counted_ptr() {
        if (node_)
            node_->release();
    }

    [[nodiscard]] Node* get() const noexcept { return node_; }
    Node* operator->() const noexcept { return node_; }
    Node& operator*() const noexcept { return *node_; }
    explicit operator bool() const noexcept { return node_ != nullptr; }

  private:
    Node* node_ = nullptr;
};
// NOLINTEND(clang-analyzer-cplusplus.NewDelete)

} // namespace strata::detail
