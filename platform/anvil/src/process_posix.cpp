#include "platform/anvil/src/process.hpp"

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <pthread.h>
#include <unistd.h>

namespace anvil {

namespace {

constinit std::atomic<std::uint64_t> generation = 0;

// Registered when the library is loaded, not on first use: a fork must find no half-made
// registration.
[[maybe_unused]] const bool generation_is_counted = []() noexcept {
    return ::pthread_atfork(nullptr, nullptr, [] { ++generation; }) == 0;
}();

/// Every signal but those by which the system reports a fault of the thread itself.
::sigset_t signals_of_the_process() noexcept {
    ::sigset_t signals;
    ::sigfillset(&signals);
    for (const int fault : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGTRAP, SIGSYS})
        ::sigdelset(&signals, fault);
    return signals;
}

/// Signals are blocked for the calling thread, and for those that it starts meanwhile, until
/// destruction.
class blocked_signals {
  public:
    blocked_signals() noexcept {
        const ::sigset_t signals = signals_of_the_process();
        ::pthread_sigmask(SIG_BLOCK, &signals, &former_);
    }
    blocked_signals(const blocked_signals&) = delete;
    blocked_signals& operator=(const blocked_signals&) = delete;
    ~blocked_signals() { ::pthread_sigmask(SIG_SETMASK, &former_, nullptr); }

  private:
    ::sigset_t former_;
};

} // namespace

std::uint64_t process_id() noexcept { return static_cast<std::uint64_t>(::getpid()); }

std::uint64_t fork_generation() noexcept { return generation.load(); }

void on_fork(void (*before)(), void (*after)()) noexcept { ::pthread_atfork(before, after, after); }

void on_quick_exit(void (*action)()) noexcept {
#ifdef __linux__
    ::at_quick_exit(action);
#else
    static_cast<void>(action);
#endif
}

bool other_threads_are_gone() noexcept { return false; }

std::thread start_background_thread(std::function<void()> body) {
    const blocked_signals none_for_the_new_thread;
    return std::thread{std::move(body)};
}

} // namespace anvil
