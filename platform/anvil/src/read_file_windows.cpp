#include "platform/anvil/src/read_file.hpp"

#include <algorithm>
#include <limits>

#include "platform/anvil/src/file_handle_windows.hpp"

namespace anvil {

namespace {

bool names_folder(const std::filesystem::path& path) noexcept {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

} // namespace

std::error_code read_file::open(const std::filesystem::path& path) noexcept {
    // Without FILE_FLAG_BACKUP_SEMANTICS a directory is refused, as if it were another's.
    auto file = owned(CreateFileW(
        path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
        OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
    LARGE_INTEGER length{};
    if (!file.is_open()) {
        const auto reason = last_error();
        return names_folder(path) ? std::make_error_code(std::errc::is_a_directory) : reason;
    }
    if (GetFileType(handle_of(file)) != FILE_TYPE_DISK)
        return std::make_error_code(std::errc::invalid_argument);
    if (!GetFileSizeEx(handle_of(file), &length))
        return last_error();
    size_ = static_cast<std::uint64_t>(length.QuadPart);
    file_ = std::move(file);
    return {};
}

void read_file::close() noexcept {
    file_.close();
    size_ = 0;
}

io_result read_file::read_at(std::uint64_t offset, std::span<std::byte> buffer) noexcept {
    constexpr std::uint64_t last_offset = std::numeric_limits<LONGLONG>::max();
    constexpr std::size_t most_bytes = std::size_t{1} << 30; // the system counts them in 32 bits
    io_result result;
    if (!is_open()) {
        result.error = std::make_error_code(std::errc::bad_file_descriptor);
        return result;
    }
    // No file reaches beyond the last offset, so reading there is reading at the end.
    while (result.bytes < buffer.size() && offset <= last_offset - result.bytes) {
        const auto rest = buffer.subspan(result.bytes);
        const std::uint64_t position = offset + result.bytes;
        OVERLAPPED place{};
        place.Offset = static_cast<DWORD>(position);
        place.OffsetHigh = static_cast<DWORD>(position >> 32);
        DWORD count = 0;
        if (!ReadFile(handle_of(file_), rest.data(),
                      static_cast<DWORD>(std::min(rest.size(), most_bytes)), &count, &place)) {
            if (GetLastError() != ERROR_HANDLE_EOF)
                result.error = last_error();
            break;
        }
        if (count == 0)
            break;
        result.bytes += count;
    }
    return result;
}

} // namespace anvil
