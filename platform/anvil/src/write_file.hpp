#pragma once

#include <cstddef>
#include <filesystem>
#include <span>

#include <anvil/io_device.hpp>

#include "platform/anvil/src/file_handle.hpp"

namespace anvil {

/// A regular file that is written from its start. The members have the contracts of io_device.
class write_file {
  public:
    /// Requires: not open. Makes the file, or empties an existing one.
    /// A directory, a pipe or a device node is not opened.
    void open(const std::filesystem::path& path) noexcept;
    void close() noexcept;

    [[nodiscard]] bool is_open() const noexcept { return file_.is_open(); }
    [[nodiscard]] io_result write(std::span<const std::byte> bytes) noexcept;

  private:
    file_handle file_;
};

} // namespace anvil
