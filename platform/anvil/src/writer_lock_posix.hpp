#pragma once

#include "platform/anvil/src/file_handle.hpp"

namespace anvil {

/// Whether the writer of a file is the one who holds its lock.
enum class writer_lock {
    held,            ///< until the file is closed, here and in processes forked meanwhile
    held_by_another, ///< whose file this is
    unknown,         ///< the file system has no locks
};

/// Takes the lock by which files that are being written are told from those that were left. Does
/// not wait.
[[nodiscard]] writer_lock lock_as_writer(const file_handle& file) noexcept;

} // namespace anvil
