#pragma once

#include <functional>

#include <sys/wait.h>
#include <unistd.h>

namespace anvil_test {

/// Forks; the child runs `body` and ends without the exit code of the test program.
/// A child that hangs is ended by a signal.
inline ::pid_t start_child(const std::function<void()>& body) {
    const ::pid_t child = ::fork();
    if (child != 0)
        return child;
    constexpr unsigned patience_s = 60;
    ::alarm(patience_s);
    try {
        body();
    } catch (...) {
        ::_exit(1);
    }
    ::_exit(0);
}

/// True when the child ended by itself and found nothing wrong.
inline bool ended_well(::pid_t child) {
    int status = 0;
    return ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace anvil_test
