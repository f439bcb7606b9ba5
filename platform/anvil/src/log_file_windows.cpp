#include "platform/anvil/src/log_file.hpp"

#include <algorithm>

#include "platform/anvil/src/file_handle_windows.hpp"

namespace anvil {

namespace {

/// FILE_APPEND_DATA without FILE_WRITE_DATA: every write goes to the end of the file as it is then.
/// The right to read is what the system asks of whoever locks a part of it.
file_handle open_for_lines(const std::filesystem::path& path) noexcept {
    auto file = owned(CreateFileW(path.c_str(), FILE_APPEND_DATA | FILE_GENERIC_READ,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (file.is_open() && GetFileType(handle_of(file)) != FILE_TYPE_DISK)
        file.close();
    return file;
}

bool same_file(const BY_HANDLE_FILE_INFORMATION& a, const BY_HANDLE_FILE_INFORMATION& b) noexcept {
    return a.dwVolumeSerialNumber == b.dwVolumeSerialNumber &&
           a.nFileIndexHigh == b.nFileIndexHigh && a.nFileIndexLow == b.nFileIndexLow;
}

/// A lock of one byte far behind any line, so that it keeps nobody from reading or adding lines.
/// Not waited for.
class rotation_lock {
  public:
    explicit rotation_lock(HANDLE file) noexcept : file_{file} {
        constexpr DWORD how = LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY;
        held_ = LockFileEx(file_, how, 0, 1, 0, &place_) != 0;
        held_by_another_ = !held_ && (GetLastError() == ERROR_LOCK_VIOLATION ||
                                      GetLastError() == ERROR_IO_PENDING);
    }
    rotation_lock(const rotation_lock&) = delete;
    rotation_lock& operator=(const rotation_lock&) = delete;
    ~rotation_lock() {
        if (held_)
            UnlockFileEx(file_, 0, 1, 0, &place_);
    }

    /// A file system that knows no locks does not keep the file from being renamed.
    [[nodiscard]] bool is_held_by_another() const noexcept { return held_by_another_; }

  private:
    static OVERLAPPED far_behind() noexcept {
        OVERLAPPED place{};
        place.OffsetHigh = 0x40000000;
        return place;
    }

    HANDLE file_;
    OVERLAPPED place_ = far_behind();
    bool held_ = false;
    bool held_by_another_ = false;
};

} // namespace

void empty_log_file(const std::filesystem::path& path) noexcept {
    // Closed at once: opening it so is what empties it.
    const auto file = owned(CreateFileW(
        path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
        nullptr, TRUNCATE_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

log_file::log_file(std::filesystem::path path) : path_{std::move(path)}, former_path_{path_} {
    former_path_ += L".1";
}

bool log_file::open() noexcept {
    file_ = open_for_lines(path_);
    if (!file_.is_open() && GetLastError() == ERROR_PATH_NOT_FOUND) {
        try {
            std::error_code error;
            std::filesystem::create_directories(path_.parent_path(), error);
        } catch (...) {
            return false; // out of memory
        }
        file_ = open_for_lines(path_);
    }
    return is_open();
}

std::optional<std::uint64_t> log_file::size() const noexcept {
    BY_HANDLE_FILE_INFORMATION opened{};
    BY_HANDLE_FILE_INFORMATION named{};
    const auto other = owned(CreateFileW(path_.c_str(), FILE_READ_ATTRIBUTES,
                                         FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                         nullptr, OPEN_EXISTING, 0, nullptr));
    if (!other.is_open() || !GetFileInformationByHandle(handle_of(file_), &opened) ||
        !GetFileInformationByHandle(handle_of(other), &named) || !same_file(opened, named))
        return {};
    return (std::uint64_t{opened.nFileSizeHigh} << 32) | opened.nFileSizeLow;
}

bool log_file::set_aside() noexcept {
    {
        const rotation_lock lock{handle_of(file_)};
        if (lock.is_held_by_another())
            return false;
        // Whoever held the lock before may have renamed the file; then the path leads to the next
        // one.
        if (size() && !MoveFileExW(path_.c_str(), former_path_.c_str(), MOVEFILE_REPLACE_EXISTING))
            return false;
    }
    close();
    return true;
}

std::size_t log_file::append(std::string_view lines) noexcept {
    constexpr std::size_t most_bytes = std::size_t{1} << 30; // the system counts them in 32 bits
    DWORD count = 0;
    const auto length = static_cast<DWORD>(std::min(lines.size(), most_bytes));
    return WriteFile(handle_of(file_), lines.data(), length, &count, nullptr) ? count : 0;
}

} // namespace anvil
