#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <utility>

#include <anvil/io_device.hpp>

#include "tests/cpp/c3d/support/bytes.hpp"

namespace c3d_test {

/// A file in memory, which may fail from a byte on.
class memory_device final : public anvil::io_device {
  public:
    explicit memory_device(byte_vector bytes) : bytes_(std::move(bytes)) {}

    /// Reading byte `offset` fails from now on.
    void fail_at(std::uint64_t offset) { failing_ = offset; }
    /// The file is announced longer than it is.
    void announce(std::uint64_t size) { announced_ = size; }

    [[nodiscard]] bool is_open() const noexcept override { return true; }
    [[nodiscard]] std::uint64_t size() const noexcept override {
        return std::max<std::uint64_t>(announced_, bytes_.size());
    }
    [[nodiscard]] anvil::io_result read_at(std::uint64_t offset,
                                           std::span<std::byte> buffer) noexcept override {
        const auto end = std::min<std::uint64_t>(offset + buffer.size(), bytes_.size());
        anvil::io_result result;
        if (offset < end)
            result.bytes = static_cast<std::size_t>(end - offset);
        if (offset + result.bytes > failing_) {
            result.bytes = static_cast<std::size_t>(failing_ > offset ? failing_ - offset : 0);
            result.error = std::make_error_code(std::errc::io_error);
        }
        const auto* from = bytes_.data() + std::min<std::uint64_t>(offset, bytes_.size());
        std::copy_n(from, result.bytes, buffer.begin());
        return result;
    }
    [[nodiscard]] anvil::io_result write(std::span<const std::byte>) noexcept override {
        return {0, std::make_error_code(std::errc::operation_not_supported)};
    }
    [[nodiscard]] std::string name() const override { return "trial.c3d"; }

  private:
    byte_vector bytes_;
    std::uint64_t failing_ = std::numeric_limits<std::uint64_t>::max();
    std::uint64_t announced_ = 0;
};

} // namespace c3d_test
