#pragma once

#include <cstdint>
#include <functional>
#include <thread>

#include <anvil/on_fork.hpp>

namespace anvil {

/// The running process's number.
[[nodiscard]] std::uint64_t process_id() noexcept;

/// Differs between a process and every process forked from it, also where the system has given
/// a descendant the number of an ancestor that ended. Always 0 where there is no fork.
[[nodiscard]] std::uint64_t fork_generation() noexcept;

/// Calls `action` when the process ends by quick_exit, which runs no other exit code. Nothing
/// happens where there is no such thing.
void on_quick_exit(void (*action)()) noexcept;

/// True once the system has ended every thread but the caller's. Windows does that at the end of a
/// process, before the exit code of libraries runs; other systems never do.
[[nodiscard]] bool other_threads_are_gone() noexcept;

/// Starts a thread that receives none of the signals sent to the process, so that they interrupt
/// the program's own threads. Throws std::system_error when the system has no thread to give.
[[nodiscard]] std::thread start_background_thread(std::function<void()> body);

} // namespace anvil
