#include "plugins/c3d/bytes/file_writer.hpp"

#include <array>

#include "plugins/c3d/bytes/export_error.hpp"
#include "plugins/c3d/bytes/file_reader.hpp"

namespace c3d {

void file_writer::write(std::span<const std::byte> bytes) {
    const auto result = device_.write(bytes);
    if (result.bytes < bytes.size() || result.error) {
        const auto reason = result.error ? result.error.message() : "the device takes no more";
        throw export_error("byte {}: {} bytes to be written, {} taken: {}", offset_, bytes.size(),
                           result.bytes, reason);
    }
    offset_ += bytes.size();
}

void file_writer::pad_block() {
    constexpr std::array<std::byte, block_bytes> zeros{};
    const auto used = offset_ % block_bytes;
    if (used != 0)
        write(std::span(zeros).first(static_cast<std::size_t>(block_bytes - used)));
}

} // namespace c3d
