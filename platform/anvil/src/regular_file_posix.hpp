#pragma once

#include <filesystem>

#include <sys/types.h>

#include "platform/anvil/src/file_handle.hpp"

namespace anvil {

/// What the system calls know an open file by.
[[nodiscard]] inline int descriptor_of(const file_handle& file) noexcept {
    return static_cast<int>(file.value());
}

/// Opens `path` with the flags of open(2) if it is a regular file, or makes it one where O_CREAT is
/// given, with `permissions` less the process's umask. Never waits for the other end of a pipe. Not
/// open on failure, with the cause in errno.
[[nodiscard]] file_handle open_regular_file(const std::filesystem::path& path, int flags,
                                            ::mode_t permissions = 0666) noexcept;

} // namespace anvil
