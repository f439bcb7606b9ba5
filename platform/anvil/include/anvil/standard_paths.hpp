#pragma once

#include <filesystem>

#include <anvil/export.hpp>

namespace anvil {

/// Folders that the platform gives a program.
struct ANVIL_EXPORT standard_paths {
    /// Location codes.
    enum location : int {
        /// What the program keeps for this user between runs, such as its log: `$XDG_STATE_HOME` or
        /// `~/.local/state` (Windows: `%LOCALAPPDATA%`), then organization name and application
        /// name.
        /// `<APPLICATION NAME IN UPPER CASE>_STATE_DIR`, where set, names the folder itself.
        application_state = 1,
    };

    /// The folder for `location_code`; it need not exist. Empty where the code is unknown or the
    /// user has no home.
    [[nodiscard]] static std::filesystem::path writable_location(int location_code);
};

} // namespace anvil
