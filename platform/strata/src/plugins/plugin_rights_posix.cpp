#include "platform/strata/src/plugins/plugin_rights.hpp"

#include <cerrno>
#include <system_error>

#include <sys/stat.h>

#include "platform/strata/src/plugins/load_failure.hpp"

namespace strata::detail {

namespace {

/// Whether the group may write; `what` says of which thing in a message.
bool is_writable_by_group(const std::filesystem::path& path, const char* what) {
    struct ::stat about{};
    if (::stat(path.c_str(), &about) != 0)
        throw load_failure{std::system_category().message(errno)};
    // A folder in which everybody may only remove what is their own is as bad: every file in it is
    // loaded.
    if ((about.st_mode & S_IWOTH) != 0)
        throw load_failure{std::string{"everybody may write to "} + what};
    return (about.st_mode & S_IWGRP) != 0;
}

} // namespace

std::string require_trusted_place(const std::filesystem::path& path) {
    const auto folder = path.has_parent_path() ? path.parent_path() : ".";
    const bool of_folder = is_writable_by_group(folder, "its folder");
    const bool of_file = is_writable_by_group(path, "it");
    if (of_folder && of_file)
        return "it and its folder";
    return of_folder ? "its folder" : of_file ? "it" : "";
}

} // namespace strata::detail
