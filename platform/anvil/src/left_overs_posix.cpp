#include "platform/anvil/src/left_overs.hpp"

#include <fcntl.h>
#include <memory>
#include <string>
#include <string_view>

#include <dirent.h>
#include <unistd.h>

#include "platform/anvil/src/regular_file_posix.hpp"
#include "platform/anvil/src/temporary_name.hpp"
#include "platform/anvil/src/writer_lock_posix.hpp"

namespace anvil {

namespace {

struct folder_closer {
    void operator()(::DIR* folder) const noexcept { ::closedir(folder); }
};
using open_folder = std::unique_ptr<::DIR, folder_closer>;

/// The file at `path` has this name for good: it was renamed, or nobody will rename it any more.
void remove_if_left(const std::filesystem::path& path) noexcept {
    // To write: some file systems lock no file for a single holder that is opened to be read.
    const auto file = open_regular_file(path, O_WRONLY | O_NOFOLLOW);
    if (file.is_open() && lock_as_writer(file) == writer_lock::held)
        ::unlink(path.c_str());
}

} // namespace

void remove_left_overs(const std::filesystem::path& destination) {
    const auto place = destination.parent_path();
    const auto prefix = temporary_prefix(destination);
    const open_folder folder{::opendir(place.empty() ? "." : place.c_str())};
    if (!folder)
        return; // one that may be written to and not be read
    // Folders of many thousand trials are looked through for each that is saved.
    while (const auto* entry = ::readdir(folder.get()))
        if (std::string_view{entry->d_name}.starts_with(prefix))
            remove_if_left(place / entry->d_name);
}

} // namespace anvil
