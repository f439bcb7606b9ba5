#pragma once

#include <filesystem>

namespace anvil {

/// Removes the files under temporary names of `destination` whose writers died. Those of writers
/// that are still at it, in this process or another, stay; so does what this process must not
/// remove. Throws nothing but std::bad_alloc.
void remove_left_overs(const std::filesystem::path& destination);

} // namespace anvil
