#pragma once

#include <filesystem>
#include <string>

namespace anvil {

/// The folder that the environment variable `name` (ASCII) holds; empty where it is unset or empty.
[[nodiscard]] std::filesystem::path environment_folder(const std::string& name);

/// Where programs keep what they want to find again in their next run for this user;
/// empty where the user has no such place.
[[nodiscard]] std::filesystem::path user_state_folder();

} // namespace anvil
