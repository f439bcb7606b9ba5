#pragma once

#include <filesystem>

namespace anvil {

/// A path in the folder of `destination` that hardly any other file has: hidden where a leading dot
/// hides, and without the destination's name, which may already be as long as a name can be.
[[nodiscard]] std::filesystem::path temporary_name(const std::filesystem::path& destination);

/// What all the names begin with that temporary_name gives for `destination`, and no name that it
/// gives for another file of the folder.
[[nodiscard]] std::filesystem::path::string_type
temporary_prefix(const std::filesystem::path& destination);

} // namespace anvil
