#include "platform/anvil/src/process.hpp"

#include <utility>

#include <windows.h>

namespace anvil {

std::uint64_t process_id() noexcept { return GetCurrentProcessId(); }

std::uint64_t fork_generation() noexcept { return 0; }

void on_fork(void (*)(), void (*)()) noexcept {}

void on_quick_exit(void (*)()) noexcept {}

bool other_threads_are_gone() noexcept {
    using question = BOOLEAN(NTAPI*)();
    const HMODULE system = GetModuleHandleW(L"ntdll.dll");
    if (system == nullptr)
        return false;
    // Through void*, because compilers warn of a direct cast between types of functions.
    const auto ending = reinterpret_cast<question>(
        reinterpret_cast<void*>(GetProcAddress(system, "RtlDllShutdownInProgress")));
    return ending != nullptr && ending() != FALSE;
}

std::thread start_background_thread(std::function<void()> body) {
    return std::thread{std::move(body)};
}

} // namespace anvil
