#pragma once

#include <filesystem>
#include <span>

#include "platform/anvil/src/file_handle.hpp"

namespace anvil {

// What is the user's alone. Rights that cannot be taken away stay: the file may be somebody else's,
// or its file system may have permissions of its own.

/// Makes the folder and those above it that are missing. Whether it is there then is not told.
/// Throws nothing but std::bad_alloc.
void make_private_folders(const std::filesystem::path& folder);

/// Takes the rights of others from an open file of the user's.
void make_private(const file_handle& file) noexcept;

/// The same for a folder, if it holds nothing but files of the given names: any other may have been
/// given to others on purpose.
void make_folder_private(const std::filesystem::path& folder,
                         std::span<const std::filesystem::path> names);

} // namespace anvil
