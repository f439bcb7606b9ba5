#pragma once

#include <cstdint>
#include <span>

#include <anvil/io_device.hpp>

namespace c3d {

/// Bytes on their way to a device, one behind the other.
class file_writer {
  public:
    explicit file_writer(anvil::io_device& device) noexcept : device_(device) {}

    [[nodiscard]] std::uint64_t offset() const noexcept { return offset_; }

    /// Throws export_error when the device does not take all of them: at which byte, and why.
    void write(std::span<const std::byte> bytes);
    /// Zero bytes until a block ends.
    void pad_block();

  private:
    anvil::io_device& device_;
    std::uint64_t offset_ = 0;
};

} // namespace c3d
