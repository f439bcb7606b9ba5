#include "platform/anvil/src/left_overs.hpp"

#include <chrono>
#include <system_error>

#include "platform/anvil/src/file_handle_windows.hpp"
#include "platform/anvil/src/temporary_name.hpp"

namespace anvil {

namespace {

/// A writer holds its file open, but for the moment in which the system gives it the destination's
/// name: what was written just now is left alone.
bool is_old(const std::filesystem::path& path) noexcept {
    std::error_code failure;
    const auto written = std::filesystem::last_write_time(path, failure);
    return !failure &&
           std::filesystem::file_time_type::clock::now() - written > std::chrono::minutes{1};
}

/// The system refuses this while another process has the file open.
void remove_if_left(const std::filesystem::path& path) noexcept {
    const auto file =
        owned(CreateFileW(path.c_str(), DELETE, 0, nullptr, OPEN_EXISTING,
                          FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
}

} // namespace

void remove_left_overs(const std::filesystem::path& destination) {
    const auto prefix = temporary_prefix(destination);
    std::error_code failure;
    std::filesystem::directory_iterator entry{destination.parent_path(), failure};
    for (; !failure && entry != std::filesystem::directory_iterator{}; entry.increment(failure)) {
        const auto& path = entry->path();
        if (path.filename().native().starts_with(prefix) && is_old(path))
            remove_if_left(path);
    }
}

} // namespace anvil
