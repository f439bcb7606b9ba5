#pragma once

#include "platform/anvil/src/file_handle.hpp"

namespace anvil {

/// Gives `file` the extended attributes of `old` that are not about the old content, but for the
/// access lists. Throws std::system_error with the cause where the system does not let it; some may
/// have been copied then.
void copy_attributes(const file_handle& old, const file_handle& file);

/// Gives `file` the access lists of `old`, which decide on its permissions too, and removes those
/// that it has from its folder alone. Throws as copy_attributes does.
void copy_access_lists(const file_handle& old, const file_handle& file);

} // namespace anvil
