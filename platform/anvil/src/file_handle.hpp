#pragma once

#include <cstdint>
#include <utility>

namespace anvil {

/// Sole owner of an open file of the operating system; closes it.
class file_handle {
  public:
    /// The system's own value: a file descriptor, or on Windows a HANDLE. Both use -1 for "no
    /// file".
    using value_type = std::intptr_t;

    file_handle() noexcept = default;
    explicit file_handle(value_type value) noexcept : value_{value} {}
    file_handle(file_handle&& other) noexcept : value_{std::exchange(other.value_, none)} {}
    file_handle& operator=(file_handle&& other) noexcept {
        std::swap(value_, other.value_);
        other.close();
        return *this;
    }
    ~file_handle() { close(); }

    [[nodiscard]] bool is_open() const noexcept { return value_ != none; }
    [[nodiscard]] value_type value() const noexcept { return value_; }
    void close() noexcept;

  private:
    static constexpr value_type none = -1;
    value_type value_ = none;
};

} // namespace anvil
