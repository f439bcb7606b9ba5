#pragma once

#include <windows.h>

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

} // namespace anvil
