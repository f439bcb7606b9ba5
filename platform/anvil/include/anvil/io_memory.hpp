#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <system_error>
#include <vector>

#include <anvil/export.hpp>
#include <anvil/io_device.hpp>

namespace anvil {

/// Bytes in memory as a device, always open. What is read and what is written are two things:
/// writing begins with nothing.
class ANVIL_EXPORT io_memory final : public io_device {
  public:
    /// A device to read `content` from, which must outlive it, or only to write. `name` stands for
    /// it in messages.
    explicit io_memory(std::span<const std::byte> content = {}, std::string name = {});
    ~io_memory() override;

    /// All that was written.
    [[nodiscard]] const std::vector<std::byte>& written() const noexcept { return written_; }

    /// Why the first write that failed did; no error when all went well.
    [[nodiscard]] std::error_code failure() const noexcept { return failure_; }

    [[nodiscard]] bool is_open() const noexcept override { return true; }
    [[nodiscard]] std::uint64_t size() const noexcept override { return content_.size(); }
    [[nodiscard]] io_result read_at(std::uint64_t offset,
                                    std::span<std::byte> buffer) noexcept override;
    /// Fails, and writes nothing, when there is no memory.
    [[nodiscard]] io_result write(std::span<const std::byte> bytes) noexcept override;
    [[nodiscard]] std::string name() const override { return name_; }

  private:
    std::span<const std::byte> content_;
    std::vector<std::byte> written_;
    std::string name_;
    std::error_code failure_;
};

} // namespace anvil
