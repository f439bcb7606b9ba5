#pragma once

#include <cstdint>
#include <system_error>

#include <anvil/io_device.hpp>

namespace strata::detail {

/// Passes reads on to a device and keeps where and why the first one failed: who judges a content
/// need not say it.
class watched_device final : public anvil::io_device {
  public:
    /// `device` must outlive this object.
    explicit watched_device(anvil::io_device& device) noexcept : device_(&device) {}
    ~watched_device() override = default;

    [[nodiscard]] std::error_code failure() const noexcept { return failure_; }
    /// Byte at which that read stopped.
    [[nodiscard]] std::uint64_t failure_offset() const noexcept { return failure_offset_; }

    [[nodiscard]] bool is_open() const noexcept override { return device_->is_open(); }
    [[nodiscard]] std::uint64_t size() const noexcept override { return device_->size(); }
    [[nodiscard]] anvil::io_result read_at(std::uint64_t offset,
                                           std::span<std::byte> buffer) noexcept override {
        const auto result = device_->read_at(offset, buffer);
        if (result.error && !failure_) {
            failure_ = result.error;
            failure_offset_ = offset + result.bytes;
        }
        return result;
    }
    [[nodiscard]] anvil::io_result write(std::span<const std::byte> bytes) noexcept override {
        return device_->write(bytes);
    }
    [[nodiscard]] std::string name() const override { return device_->name(); }

  private:
    anvil::io_device* device_;
    std::error_code failure_;
    std::uint64_t failure_offset_ = 0;
};

} // namespace strata::detail
