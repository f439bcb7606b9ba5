#pragma once

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

#include <anvil/io_device.hpp>

namespace strata_test {

/// A device that reads from a text and appends to another.
class memory_device final : public anvil::io_device {
  public:
    explicit memory_device(std::string content) : content_(std::move(content)) {}

    [[nodiscard]] bool is_open() const noexcept override { return true; }
    [[nodiscard]] std::uint64_t size() const noexcept override { return content_.size(); }
    [[nodiscard]] anvil::io_result read_at(std::uint64_t offset,
                                           std::span<std::byte> buffer) noexcept override {
        if (read_failure)
            return {.bytes = 0, .error = read_failure};
        if (offset >= content_.size())
            return {};
        const auto bytes = std::min<std::size_t>(buffer.size(), content_.size() - offset);
        std::memcpy(buffer.data(), content_.data() + offset, bytes);
        return {.bytes = bytes, .error = {}};
    }
    [[nodiscard]] anvil::io_result write(std::span<const std::byte> bytes) noexcept override {
        written.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
        return {.bytes = bytes.size(), .error = {}};
    }
    [[nodiscard]] std::error_code commit() noexcept override {
        ++commits;
        return commit_failure;
    }
    [[nodiscard]] std::string name() const override { return "memory.dat"; }

    std::string written;
    int commits = 0;
    std::error_code commit_failure;
    std::error_code read_failure;

  private:
    std::string content_;
};

} // namespace strata_test
