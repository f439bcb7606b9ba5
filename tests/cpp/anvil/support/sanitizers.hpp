#pragma once

namespace anvil_test {

/// False where a child that is forked while another thread runs may find a lock of the sanitizer's
/// runtime held for ever.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr bool runtime_survives_forks = false;
#else
inline constexpr bool runtime_survives_forks = true;
#endif

/// True where the sanitizer's runtime has a thread of its own.
#if defined(__SANITIZE_THREAD__)
inline constexpr bool runtime_has_threads = true;
#else
inline constexpr bool runtime_has_threads = false;
#endif

} // namespace anvil_test
