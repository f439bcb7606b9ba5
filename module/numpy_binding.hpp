#pragma once

namespace mox {

/// Binds NumPy's C API. On failure prints the cause to standard error and leaves ImportError
/// "numpy._core.multiarray failed to import" pending; returns false.
[[nodiscard]] bool bind_numpy() noexcept;

} // namespace mox
