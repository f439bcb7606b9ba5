#pragma once

#include <filesystem>

#include <anvil/export.hpp>

namespace anvil {

/// The file (executable, library or extension module) that the code at `address` was loaded from;
/// empty if unknown.
[[nodiscard]] ANVIL_EXPORT std::filesystem::path path_of_code(const void* address);

/// The full path of the file that the caller is compiled into.
/// Static, so that every library that includes this header asks with an address of its own.
[[nodiscard]] static inline std::filesystem::path module_path() {
    static const char anchor = 0;
    return path_of_code(&anchor);
}

} // namespace anvil
