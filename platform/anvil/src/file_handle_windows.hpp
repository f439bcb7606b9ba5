#pragma once

#include <windows.h>

#include <system_error>

#include "platform/anvil/src/file_handle.hpp"

namespace anvil {

/// The handle as the system's functions take it.
[[nodiscard]] inline HANDLE handle_of(const file_handle& file) noexcept {
    return reinterpret_cast<HANDLE>(file.value());
}

/// Takes a handle that CreateFileW gave, also that of a failure.
[[nodiscard]] inline file_handle owned(HANDLE handle) noexcept {
    return file_handle{reinterpret_cast<file_handle::value_type>(handle)};
}

/// Why the last call of the system failed: one of the reasons that every system has, with its
/// words. Windows' own words come in the language and the code page of the user; they are left to
/// reasons that others have not.
[[nodiscard]] std::error_code last_error() noexcept;

} // namespace anvil
