#include "platform/anvil/src/private_file_posix.hpp"

#include <algorithm>
#include <fcntl.h>
#include <memory>
#include <string_view>

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/anvil/src/regular_file_posix.hpp"

namespace anvil {

namespace {

struct folder_closer {
    void operator()(::DIR* folder) const noexcept { ::closedir(folder); }
};

/// False also for a folder that cannot be looked through.
bool holds_nothing_but(const file_handle& folder, std::span<const std::filesystem::path> names) {
    const std::unique_ptr<::DIR, folder_closer> open{
        ::fdopendir(::fcntl(descriptor_of(folder), F_DUPFD_CLOEXEC, 0))};
    if (!open)
        return false;
    while (const auto* entry = ::readdir(open.get())) {
        const std::string_view name = entry->d_name;
        const bool is_known = std::ranges::any_of(
            names, [name](const auto& known) { return known.native() == name; });
        if (name != "." && name != ".." && !is_known)
            return false;
    }
    return true;
}

/// Whether others have rights to what this process may take them from.
bool is_open_to_others(const file_handle& file) noexcept {
    struct ::stat about{};
    return ::fstat(descriptor_of(file), &about) == 0 && about.st_uid == ::geteuid() &&
           (about.st_mode & (S_IRWXG | S_IRWXO)) != 0;
}

} // namespace

void make_private_folders(const std::filesystem::path& folder) {
    std::filesystem::path path;
    for (const auto& part : folder) {
        path /= part;
        ::mkdir(path.c_str(), S_IRWXU);
    }
}

void make_private(const file_handle& file) noexcept {
    if (file.is_open() && is_open_to_others(file))
        static_cast<void>(::fchmod(descriptor_of(file), S_IRUSR | S_IWUSR));
}

void make_folder_private(const std::filesystem::path& folder,
                         std::span<const std::filesystem::path> names) {
    const file_handle handle{
        ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    if (handle.is_open() && is_open_to_others(handle) && holds_nothing_but(handle, names))
        static_cast<void>(::fchmod(descriptor_of(handle), S_IRWXU));
}

} // namespace anvil
