#include "platform/anvil/src/write_file.hpp"

#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

#include "platform/anvil/src/file_access_posix.hpp"
#include "platform/anvil/src/left_overs.hpp"
#include "platform/anvil/src/not_kept.hpp"
#include "platform/anvil/src/regular_file_posix.hpp"
#include "platform/anvil/src/temporary_name.hpp"
#include "platform/anvil/src/writer_lock_posix.hpp"

namespace anvil {

namespace {

std::error_code last_error() noexcept { return {errno, std::system_category()}; }

/// What `path` leads to when it is a link, or a link to a link; that file need not exist.
std::filesystem::path without_links(std::filesystem::path path) {
    constexpr int most_links = 40; // as the system allows
    std::error_code failure;
    for (int i = 0; i < most_links && std::filesystem::is_symlink(path, failure); ++i)
        path = path.parent_path() / std::filesystem::read_symlink(path, failure);
    return path;
}

/// Makes the new name of a file in `folder` outlive a power failure, as far as the system can.
void sync_folder(const std::filesystem::path& folder) noexcept {
    const file_handle handle{
        ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    if (handle.is_open())
        ::fsync(descriptor_of(handle));
}

// Who may see what is written is settled when it is complete.
constexpr ::mode_t writers_alone = S_IRUSR | S_IWUSR;

/// The name under which the system knows an open file that has none of its own.
struct system_name {
    std::array<char, 32> text{};

    explicit system_name(const file_handle& file) noexcept {
        std::snprintf(text.data(), text.size(), "/proc/self/fd/%d", descriptor_of(file));
    }
};

/// A new file in `folder` that has no name yet, so that nothing of it is left when the process
/// dies. Not open where the system has no such files or could not name it later.
file_handle open_unnamed(const std::filesystem::path& folder) noexcept {
#ifdef O_TMPFILE
    auto file = open_regular_file(folder.empty() ? "." : folder.c_str(), O_WRONLY | O_TMPFILE,
                                  writers_alone);
    if (file.is_open() && ::access(system_name{file}.text.data(), F_OK) == 0)
        return file;
#endif
    return {};
}

/// Names a file of open_unnamed. The lock comes first: from now on it may be taken for one that was
/// left. False, with the cause in errno, when it has no name.
bool give_name(const file_handle& file, const std::filesystem::path& name) noexcept {
    static_cast<void>(lock_as_writer(file));
    return ::linkat(AT_FDCWD, system_name{file}.text.data(), AT_FDCWD, name.c_str(),
                    AT_SYMLINK_FOLLOW) == 0;
}

/// A new file at `path`, with the lock where the file system has locks. Not open on failure, with
/// the cause in errno: EEXIST also when somebody took the file for one that was left, before it had
/// its lock.
file_handle open_named(const std::filesystem::path& path) noexcept {
    auto file = open_regular_file(path, O_WRONLY | O_CREAT | O_EXCL, writers_alone);
    if (!file.is_open())
        return file;
    const auto lock = lock_as_writer(file);
    struct ::stat about{};
    if (lock != writer_lock::held_by_another && ::fstat(descriptor_of(file), &about) == 0 &&
        about.st_nlink != 0)
        return file;
    errno = EEXIST;
    return {};
}

} // namespace

std::error_code write_file::open(const std::filesystem::path& path) {
    destination_ = without_links(path);
    // Whoever may not change the old file must not replace it either.
    old_ = open_regular_file(destination_, O_WRONLY);
    if (!old_.is_open() && errno != ENOENT)
        return last_error();
    remove_left_overs(destination_);
    sample_ = temporary_name(destination_);
    file_ = open_unnamed(destination_.parent_path());
    if (file_.is_open()) {
        later_name_ = temporary_name(destination_);
        return {};
    }
    do {
        temporary_ = temporary_name(destination_);
        file_ = open_named(temporary_);
    } while (!file_.is_open() && errno == EEXIST);
    if (file_.is_open())
        return {};
    const auto failure = last_error();
    temporary_.clear();
    old_.close();
    return failure;
}

io_result write_file::write_bytes(std::span<const std::byte> bytes) noexcept {
    io_result result;
    while (result.bytes < bytes.size() && !result.error) {
        const auto rest = bytes.subspan(result.bytes);
        const auto count = ::write(descriptor_of(file_), rest.data(), rest.size());
        if (count > 0)
            result.bytes += static_cast<std::size_t>(count);
        else if (count == 0)
            result.error = std::make_error_code(std::errc::io_error);
        else if (errno != EINTR)
            result.error = last_error();
    }
    return result;
}

/// Gives the file the rights of the one that it replaces; where there is none, those that the
/// system and the folder give to any new file, of which an empty one is made as a sample.
std::error_code write_file::settle_access() noexcept {
    // Another file may be there by now. When there is none any more the one that was there counts.
    auto now = open_regular_file(destination_, O_WRONLY);
    if (!now.is_open() && errno != ENOENT)
        return last_error();
    if (now.is_open())
        old_ = std::move(now);
    if (old_.is_open())
        return keep_access(std::exchange(old_, {}), file_);
    const auto sample = open_regular_file(sample_, O_WRONLY | O_CREAT | O_EXCL);
    if (!sample.is_open())
        return last_error();
    const auto failure = keep_access(sample, file_);
    ::unlink(sample_.c_str());
    return failure ? cause_of(failure) : failure;
}

std::error_code write_file::replace_destination() noexcept {
    if (const auto failure = settle_access())
        return failure;
    if (::fsync(descriptor_of(file_)) != 0)
        return last_error();
    if (temporary_.empty()) {
        if (!give_name(file_, later_name_))
            return last_error();
        temporary_.swap(later_name_);
    }
    if (std::rename(temporary_.c_str(), destination_.c_str()) != 0)
        return last_error();
    sync_folder(destination_.parent_path());
    return {};
}

void write_file::remove_temporary() noexcept { ::unlink(temporary_.c_str()); }

} // namespace anvil
