#include "plugins/c3d/bytes/file_reader.hpp"

#include <algorithm>

#include "plugins/c3d/bytes/import_error.hpp"

namespace c3d {

namespace {

std::size_t read_at(anvil::io_device& device, std::uint64_t offset, std::span<std::byte> buffer) {
    const auto result = device.read_at(offset, buffer);
    if (result.error) {
        throw import_error(offset + result.bytes, "{} bytes expected, reading failed: {}",
                           buffer.size() - result.bytes, result.error.message());
    }
    return result.bytes;
}

} // namespace

std::vector<std::byte> file_reader::read_up_to(std::uint64_t offset, std::size_t count) const {
    if (offset >= size_)
        return {};
    std::vector<std::byte> bytes(
        static_cast<std::size_t>(std::min<std::uint64_t>(count, size_ - offset)));
    bytes.resize(read_at(*device_, offset, bytes));
    return bytes;
}

void file_reader::read_exactly(std::uint64_t offset, std::span<std::byte> buffer) const {
    const auto count = read_at(*device_, offset, buffer);
    if (count != buffer.size()) {
        throw import_error(offset + count, "{} bytes expected, but the file ends here",
                           buffer.size() - count);
    }
}

} // namespace c3d
