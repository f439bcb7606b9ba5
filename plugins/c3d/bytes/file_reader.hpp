#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include <anvil/io_device.hpp>

namespace c3d {

/// Byte of block `block` of a file whose header begins at `origin`: blocks have 512 bytes and count
/// from 1.
[[nodiscard]] constexpr std::uint64_t block_offset(std::uint64_t origin,
                                                   std::uint64_t block) noexcept {
    return origin + (block - 1) * 512;
}

inline constexpr std::uint64_t block_bytes = 512;

/// Reads an open device. Every failure of the device is an import_error that names the place.
class file_reader {
  public:
    explicit file_reader(anvil::io_device& device) noexcept
        : device_(&device), size_(device.size()) {}

    /// Length of the file in bytes.
    [[nodiscard]] std::uint64_t size() const noexcept { return size_; }

    /// Up to `count` bytes from `offset` on; fewer where the file ends.
    [[nodiscard]] std::vector<std::byte> read_up_to(std::uint64_t offset, std::size_t count) const;

    /// Fills `buffer` from `offset` on. The file is known to be long enough; a file that has become
    /// shorter is an error.
    void read_exactly(std::uint64_t offset, std::span<std::byte> buffer) const;

  private:
    anvil::io_device* device_;
    std::uint64_t size_;
};

} // namespace c3d
