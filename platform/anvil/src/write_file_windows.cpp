#include "platform/anvil/src/write_file.hpp"

#include <algorithm>

#include "platform/anvil/src/file_handle_windows.hpp"
#include "platform/anvil/src/left_overs.hpp"
#include "platform/anvil/src/temporary_name.hpp"

namespace anvil {

namespace {

file_handle open_to_write(const std::filesystem::path& path, DWORD access,
                          DWORD disposition) noexcept {
    return owned(CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                             disposition, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_SEQUENTIAL_SCAN,
                             nullptr));
}

} // namespace

std::error_code write_file::open(const std::filesystem::path& path) {
    std::error_code failure;
    destination_ = std::filesystem::weakly_canonical(path, failure);
    if (failure)
        destination_ = path;
    // Whoever may not change the old file must not replace it either; and one that another program
    // holds cannot be replaced, which is better known before all is written.
    const auto old = open_to_write(destination_, GENERIC_WRITE | DELETE, OPEN_EXISTING);
    if (old.is_open() ? GetFileType(handle_of(old)) != FILE_TYPE_DISK
                      : GetLastError() != ERROR_FILE_NOT_FOUND)
        return old.is_open() ? std::make_error_code(std::errc::invalid_argument) : last_error();
    remove_left_overs(destination_);
    do {
        temporary_ = temporary_name(destination_);
        file_ = open_to_write(temporary_, GENERIC_WRITE, CREATE_NEW);
    } while (!file_.is_open() && GetLastError() == ERROR_FILE_EXISTS);
    if (file_.is_open())
        return {};
    const auto reason = last_error();
    temporary_.clear();
    return reason;
}

io_result write_file::write_bytes(std::span<const std::byte> bytes) noexcept {
    constexpr std::size_t most_bytes = std::size_t{1} << 30; // the system counts them in 32 bits
    io_result result;
    while (result.bytes < bytes.size() && !result.error) {
        const auto rest = bytes.subspan(result.bytes);
        DWORD count = 0;
        if (!WriteFile(handle_of(file_), rest.data(),
                       static_cast<DWORD>(std::min(rest.size(), most_bytes)), &count, nullptr))
            result.error = last_error();
        else if (count == 0)
            result.error = std::make_error_code(std::errc::io_error);
        result.bytes += count;
    }
    return result;
}

std::error_code write_file::replace_destination() noexcept {
    if (!FlushFileBuffers(handle_of(file_)))
        return last_error();
    file_.close();
    // ReplaceFileW keeps the old file's attributes and access rights, but there has to be one.
    if (ReplaceFileW(destination_.c_str(), temporary_.c_str(), nullptr, 0, nullptr, nullptr) ||
        (GetLastError() == ERROR_FILE_NOT_FOUND &&
         MoveFileExW(temporary_.c_str(), destination_.c_str(), MOVEFILE_WRITE_THROUGH)))
        return {};
    return last_error();
}

void write_file::remove_temporary() noexcept { DeleteFileW(temporary_.c_str()); }

} // namespace anvil
