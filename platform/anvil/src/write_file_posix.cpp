#include "platform/anvil/src/write_file.hpp"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/anvil/src/regular_file_posix.hpp"
#include "platform/anvil/src/temporary_name.hpp"

namespace anvil {

namespace {

int descriptor_of(const file_handle& file) noexcept { return static_cast<int>(file.value()); }

std::error_code last_error() noexcept { return {errno, std::system_category()}; }

/// What `path` leads to when it is a link, or a link to a link; that file need not exist.
std::filesystem::path without_links(std::filesystem::path path) {
    constexpr int most_links = 40; // as the system allows
    std::error_code failure;
    for (int i = 0; i < most_links && std::filesystem::is_symlink(path, failure); ++i)
        path = path.parent_path() / std::filesystem::read_symlink(path, failure);
    return path;
}

/// Gives `file` the owner and permissions of `old`. Who may not give a file away keeps it.
void take_over_permissions(const file_handle& file, const file_handle& old) noexcept {
    constexpr ::mode_t permissions = 07777;
    struct ::stat about{};
    if (::fstat(descriptor_of(old), &about) != 0)
        return;
    const auto owned = ::fchown(descriptor_of(file), about.st_uid, about.st_gid);
    const auto permitted = ::fchmod(descriptor_of(file), about.st_mode & permissions);
    static_cast<void>(owned);
    static_cast<void>(permitted);
}

/// Makes the new name of a file in `folder` outlive a power failure, as far as the system can.
void sync_folder(const std::filesystem::path& folder) noexcept {
    const file_handle handle{
        ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    if (handle.is_open())
        ::fsync(descriptor_of(handle));
}

} // namespace

void write_file::open(const std::filesystem::path& path) {
    destination_ = without_links(path);
    // Whoever may not change the old file must not replace it either.
    const auto old = open_regular_file(destination_, O_WRONLY);
    if (!old.is_open() && errno != ENOENT)
        return;
    do {
        temporary_ = temporary_name(destination_);
        file_ = open_regular_file(temporary_, O_WRONLY | O_CREAT | O_EXCL);
    } while (!file_.is_open() && errno == EEXIST);
    if (!file_.is_open())
        temporary_.clear();
    else if (old.is_open())
        take_over_permissions(file_, old);
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

std::error_code write_file::replace_destination() noexcept {
    if (::fsync(descriptor_of(file_)) != 0)
        return last_error();
    if (std::rename(temporary_.c_str(), destination_.c_str()) != 0)
        return last_error();
    sync_folder(destination_.parent_path());
    return {};
}

void write_file::remove_temporary() noexcept { ::unlink(temporary_.c_str()); }

} // namespace anvil
