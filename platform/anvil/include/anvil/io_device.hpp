#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <system_error>

#include <anvil/export.hpp>

namespace anvil {

/// What one read or write did.
struct io_result {
    std::size_t bytes = 0; ///< bytes transferred, also when `error` is set
    /// Why fewer bytes were transferred than the device could have given or taken.
    std::error_code error;
};

/// A random-access source and a sequential sink of bytes. Not thread-safe. No member throws.
class ANVIL_EXPORT io_device {
  public:
    io_device() = default;
    io_device(const io_device&) = delete;
    io_device& operator=(const io_device&) = delete;
    virtual ~io_device();

    /// True between a successful open and close.
    [[nodiscard]] virtual bool is_open() const noexcept = 0;

    /// Length in bytes as of the last open; 0 when closed.
    [[nodiscard]] virtual std::uint64_t size() const noexcept = 0;

    /// Fills `buffer` with the bytes from `offset` on. Fewer bytes without an error mean the end of
    /// the device.
    [[nodiscard]] virtual io_result read_at(std::uint64_t offset,
                                            std::span<std::byte> buffer) noexcept = 0;

    /// Appends all of `bytes` behind what was written since the device was opened.
    [[nodiscard]] virtual io_result write(std::span<const std::byte> bytes) noexcept = 0;

    /// What the device reads or writes, for messages: for a file its path as UTF-8.
    [[nodiscard]] virtual std::string name() const = 0;

    /// Ends the writing: says that everything was written, so that it may take the place of what
    /// the device held before. An error means that it did not. A device that has nothing to replace
    /// need not do anything.
    [[nodiscard]] virtual std::error_code commit() noexcept;
};

} // namespace anvil
