#include "platform/anvil/src/write_file.hpp"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

#include "platform/anvil/src/regular_file_posix.hpp"

namespace anvil {

void write_file::open(const std::filesystem::path& path) noexcept {
    // Emptied only once it is known to be a regular file.
    auto file = open_regular_file(path, O_WRONLY | O_CREAT);
    if (!file.is_open() || ::ftruncate(static_cast<int>(file.value()), 0) != 0)
        return;
    file_ = std::move(file);
}

void write_file::close() noexcept { file_.close(); }

io_result write_file::write(std::span<const std::byte> bytes) noexcept {
    io_result result;
    if (!is_open()) {
        result.error = std::make_error_code(std::errc::bad_file_descriptor);
        return result;
    }
    while (result.bytes < bytes.size()) {
        const auto rest = bytes.subspan(result.bytes);
        const auto count = ::write(static_cast<int>(file_.value()), rest.data(), rest.size());
        if (count == -1 && errno == EINTR)
            continue;
        if (count == -1)
            result.error = std::error_code{errno, std::system_category()};
        if (count == 0)
            result.error = std::make_error_code(std::errc::io_error);
        if (count <= 0)
            break;
        result.bytes += static_cast<std::size_t>(count);
    }
    return result;
}

} // namespace anvil
