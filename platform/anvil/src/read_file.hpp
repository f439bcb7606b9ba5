#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <system_error>

#include <anvil/io_device.hpp>

#include "platform/anvil/src/file_handle.hpp"

namespace anvil {

/// A regular file that is read. The members have the contracts of io_device.
class read_file {
  public:
    /// Requires: not open. A directory, a pipe or a device node is not opened. Gives the reason
    /// when the file is not open afterwards.
    [[nodiscard]] std::error_code open(const std::filesystem::path& path) noexcept;
    void close() noexcept;

    [[nodiscard]] bool is_open() const noexcept { return file_.is_open(); }
    [[nodiscard]] std::uint64_t size() const noexcept { return size_; }
    [[nodiscard]] io_result read_at(std::uint64_t offset, std::span<std::byte> buffer) noexcept;

  private:
    file_handle file_;
    std::uint64_t size_ = 0; // when it was opened
};

} // namespace anvil
