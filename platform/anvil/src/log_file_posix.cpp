#include "platform/anvil/src/log_file.hpp"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/anvil/src/private_file_posix.hpp"
#include "platform/anvil/src/regular_file_posix.hpp"

namespace anvil {

namespace {

/// An advisory lock that is not waited for. Released by hand as well as by closing the file: a
/// child that was forked meanwhile holds the same open file and would keep the lock.
class rotation_lock {
  public:
    explicit rotation_lock(int descriptor) noexcept
        : descriptor_{descriptor}, result_{::flock(descriptor, LOCK_EX | LOCK_NB)},
          error_{result_ == 0 ? 0 : errno} {}
    rotation_lock(const rotation_lock&) = delete;
    rotation_lock& operator=(const rotation_lock&) = delete;
    ~rotation_lock() {
        if (result_ == 0)
            ::flock(descriptor_, LOCK_UN);
    }

    /// A file system that knows no locks does not keep the file from being renamed.
    [[nodiscard]] bool is_held_by_another() const noexcept {
        return result_ != 0 && error_ == EWOULDBLOCK;
    }

  private:
    int descriptor_;
    int result_;
    int error_;
};

/// Lines name files, and those may be called by the names of patients.
void close_to_others(const file_handle& file, const std::filesystem::path& path,
                     const std::filesystem::path& former_path) {
    make_private(file);
    make_private(open_regular_file(former_path, O_WRONLY));
    const std::array names{path.filename(), former_path.filename()};
    make_folder_private(path.parent_path(), names);
}

} // namespace

void empty_log_file(const std::filesystem::path& path) noexcept {
    const auto file = open_regular_file(path, O_WRONLY);
    // A file that cannot be emptied keeps its lines, and new ones follow them.
    if (file.is_open())
        static_cast<void>(::ftruncate(descriptor_of(file), 0));
}

log_file::log_file(std::filesystem::path path) : path_{std::move(path)}, former_path_{path_} {
    former_path_ += ".1";
}

bool log_file::open() noexcept {
    constexpr int flags = O_WRONLY | O_APPEND | O_CREAT;
    constexpr ::mode_t permissions = S_IRUSR | S_IWUSR;
    try {
        file_ = open_regular_file(path_, flags, permissions);
        if (!file_.is_open() && errno == ENOENT) {
            make_private_folders(path_.parent_path());
            file_ = open_regular_file(path_, flags, permissions);
        }
        if (file_.is_open())
            close_to_others(file_, path_, former_path_);
        return is_open();
    } catch (...) {
        close();
        return false; // out of memory
    }
}

std::optional<std::uint64_t> log_file::size() const noexcept {
    struct ::stat opened{};
    struct ::stat named{};
    if (::fstat(static_cast<int>(file_.value()), &opened) != 0)
        return {};
    if (::stat(path_.c_str(), &named) != 0)
        return {};
    if (opened.st_dev != named.st_dev || opened.st_ino != named.st_ino)
        return {};
    return static_cast<std::uint64_t>(opened.st_size);
}

bool log_file::set_aside() noexcept {
    {
        const rotation_lock lock{static_cast<int>(file_.value())};
        if (lock.is_held_by_another())
            return false;
        // Whoever held the lock before may have renamed the file; then the path leads to the next
        // one.
        if (size() && ::rename(path_.c_str(), former_path_.c_str()) != 0)
            return false;
    }
    close();
    return true;
}

std::size_t log_file::append(std::string_view lines) noexcept {
    for (;;) {
        const auto count = ::write(static_cast<int>(file_.value()), lines.data(), lines.size());
        if (count >= 0)
            return static_cast<std::size_t>(count);
        if (errno != EINTR)
            return 0;
    }
}

} // namespace anvil
