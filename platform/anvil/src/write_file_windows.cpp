#include "platform/anvil/src/write_file.hpp"

#include <algorithm>

#include <windows.h>

namespace anvil {

namespace {

HANDLE handle_of(const file_handle& file) noexcept {
    return reinterpret_cast<HANDLE>(file.value());
}

} // namespace

void write_file::open(const std::filesystem::path& path) noexcept {
    // OPEN_ALWAYS: emptied only once it is known to be a regular file.
    file_handle file{reinterpret_cast<file_handle::value_type>(
        CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                    OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN, nullptr))};
    if (!file.is_open() || GetFileType(handle_of(file)) != FILE_TYPE_DISK ||
        !SetEndOfFile(handle_of(file)))
        return;
    file_ = std::move(file);
}

void write_file::close() noexcept { file_.close(); }

io_result write_file::write(std::span<const std::byte> bytes) noexcept {
    constexpr std::size_t most_bytes = std::size_t{1} << 30; // the system counts them in 32 bits
    io_result result;
    if (!is_open()) {
        result.error = std::make_error_code(std::errc::bad_file_descriptor);
        return result;
    }
    while (result.bytes < bytes.size()) {
        const auto rest = bytes.subspan(result.bytes);
        DWORD count = 0;
        if (!WriteFile(handle_of(file_), rest.data(),
                       static_cast<DWORD>(std::min(rest.size(), most_bytes)), &count, nullptr)) {
            result.error =
                std::error_code{static_cast<int>(GetLastError()), std::system_category()};
            break;
        }
        if (count == 0) {
            result.error = std::make_error_code(std::errc::io_error);
            break;
        }
        result.bytes += count;
    }
    return result;
}

} // namespace anvil
