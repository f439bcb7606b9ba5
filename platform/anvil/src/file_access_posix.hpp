#pragma once

#include <system_error>

#include "platform/anvil/src/file_handle.hpp"

namespace anvil {

/// Gives `file`, which this process made, everything of `old` that says who may do what with it:
/// group, permissions, access lists and the owner, and its other extended attributes. Until all
/// that is there `file` is its owner's alone.
///
/// An error, and a file that must not take the place of the old one, where any of that cannot be
/// kept. But who may not give files away stays the owner, unless that gives the old one more than
/// before.
[[nodiscard]] std::error_code keep_access(const file_handle& old, const file_handle& file) noexcept;

} // namespace anvil
