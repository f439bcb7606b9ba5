#include "store/interpreter_release.hpp"

#include <chrono>
#include <thread>

namespace mox {

interpreter_release::~interpreter_release() {
    try {
        PyEval_RestoreThread(thread_);
    } catch (...) {
        // The interpreter has ended, and some versions end a thread that comes back by unwinding
        // it, which would destroy references that nobody may touch any more, and end the process
        // where something must not throw. The thread stays here until the process is gone.
        for (;;)
            std::this_thread::sleep_for(std::chrono::hours(1));
    }
}

} // namespace mox
