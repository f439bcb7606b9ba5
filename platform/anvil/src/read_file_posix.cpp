#include "platform/anvil/src/read_file.hpp"

#include <cerrno>
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/anvil/src/regular_file_posix.hpp"

namespace anvil {

static_assert(sizeof(::off_t) == 8, "files are longer than 2 GiB");

std::error_code read_file::open(const std::filesystem::path& path) noexcept {
    auto file = open_regular_file(path, O_RDONLY);
    if (!file.is_open())
        return {errno, std::system_category()};

    const int descriptor = descriptor_of(file);
    struct ::stat about{};
    if (::fstat(descriptor, &about) != 0)
        return {errno, std::system_category()};
    // Acquisitions are decoded from front to back: let the system read further ahead. Only advice,
    // so it may fail.
    static_cast<void>(::posix_fadvise(descriptor, 0, 0, POSIX_FADV_SEQUENTIAL));
    size_ = static_cast<std::uint64_t>(about.st_size);
    file_ = std::move(file);
    return {};
}

void read_file::close() noexcept {
    file_.close();
    size_ = 0;
}

io_result read_file::read_at(std::uint64_t offset, std::span<std::byte> buffer) noexcept {
    constexpr std::uint64_t last_offset = std::numeric_limits<::off_t>::max();
    io_result result;
    if (!is_open()) {
        result.error = std::make_error_code(std::errc::bad_file_descriptor);
        return result;
    }
    // No file reaches beyond the last offset, so reading there is reading at the end.
    while (result.bytes < buffer.size() && offset <= last_offset - result.bytes) {
        const auto rest = buffer.subspan(result.bytes);
        const auto count = ::pread(static_cast<int>(file_.value()), rest.data(), rest.size(),
                                   static_cast<::off_t>(offset + result.bytes));
        if (count == -1 && errno == EINTR)
            continue;
        if (count == -1)
            result.error = std::error_code{errno, std::system_category()};
        if (count <= 0)
            break;
        result.bytes += static_cast<std::size_t>(count);
    }
    return result;
}

} // namespace anvil
