#pragma once

#include <anvil/export.hpp>

namespace anvil {

/// Calls `before` ahead of every fork of the process and `after` behind it, in the parent and in
/// the child: a lock that is taken by the one and left by the other is never found taken by a
/// thread that the child has not. Nothing happens where there is no fork.
ANVIL_EXPORT void on_fork(void (*before)(), void (*after)()) noexcept;

} // namespace anvil
