#include "platform/anvil/src/regular_file_posix.hpp"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace anvil {

namespace {

/// `file` itself, or a duplicate beyond the standard streams: in a process that was started without
/// them the file would become standard output or error, and whatever is printed would go into it.
file_handle beyond_standard_streams(file_handle file) noexcept {
    if (!file.is_open() || file.value() > STDERR_FILENO)
        return file;
    return file_handle{::fcntl(descriptor_of(file), F_DUPFD_CLOEXEC, STDERR_FILENO + 1)};
}

} // namespace

file_handle open_regular_file(const std::filesystem::path& path, int flags,
                              ::mode_t permissions) noexcept {
    int descriptor = -1;
    do {
        descriptor = ::open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, permissions);
    } while (descriptor == -1 && errno == EINTR);

    auto file = beyond_standard_streams(file_handle{descriptor});
    struct ::stat about{};
    if (!file.is_open() || ::fstat(descriptor_of(file), &about) != 0)
        return {};
    if (!S_ISREG(about.st_mode)) {
        errno = S_ISDIR(about.st_mode) ? EISDIR : EINVAL;
        return {};
    }
    return file;
}

} // namespace anvil
