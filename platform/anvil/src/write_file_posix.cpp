#include "platform/anvil/src/write_file.hpp"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

#include "platform/anvil/src/file_access_posix.hpp"
#include "platform/anvil/src/regular_file_posix.hpp"
#include "platform/anvil/src/temporary_name.hpp"

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

} // namespace

std::error_code write_file::open(const std::filesystem::path& path) {
    destination_ = without_links(path);
    // Whoever may not change the old file must not replace it either.
    old_ = open_regular_file(destination_, O_WRONLY);
    if (!old_.is_open() && errno != ENOENT)
        return last_error();
    // Who may see what an old file holds is settled when the new one is complete.
    const ::mode_t permissions = old_.is_open() ? 0600 : 0666;
    do {
        temporary_ = temporary_name(destination_);
        file_ = open_regular_file(temporary_, O_WRONLY | O_CREAT | O_EXCL, permissions);
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

std::error_code write_file::replace_destination() noexcept {
    // Another file may be there by now. When there is none any more the one that was there counts.
    auto now = open_regular_file(destination_, O_WRONLY);
    if (now.is_open())
        old_ = std::move(now);
    else if (errno != ENOENT)
        return last_error();
    if (old_.is_open()) {
        if (const auto failure = keep_access(old_, file_))
            return failure;
        old_.close();
    }
    if (::fsync(descriptor_of(file_)) != 0)
        return last_error();
    if (std::rename(temporary_.c_str(), destination_.c_str()) != 0)
        return last_error();
    sync_folder(destination_.parent_path());
    return {};
}

void write_file::remove_temporary() noexcept { ::unlink(temporary_.c_str()); }

} // namespace anvil
