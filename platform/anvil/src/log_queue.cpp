#include "platform/anvil/src/log_queue.hpp"

#include <chrono>
#include <system_error>
#include <utility>

#include "platform/anvil/src/log_record.hpp"

namespace anvil {

namespace {

/// Callers wait when this many bytes are pending: a slow disk must not fill the memory.
constexpr std::size_t most_pending = std::size_t{4} * 1024 * 1024;

} // namespace

log_queue::log_queue(std::filesystem::path path, bool sets_aside)
    : writer_{std::move(path), sets_aside} {}

log_queue::~log_queue() { flush(); }

void log_queue::take(const log_msg& message) noexcept {
    const auto time = std::chrono::system_clock::now();
    lock held{mutex_};
    wait(held, [this] { return pending_.size() < most_pending; });
    try {
        append_log_record(pending_, time, process_, message);
    } catch (...) {
        return;
    }
    ++taken_;
    ensure_thread();
    wake_.notify_one();
}

void log_queue::flush() noexcept {
    lock held{mutex_};
    const auto target = taken_;
    if (thread_is_active_) {
        thread_is_to_end_ = true;
        wake_.notify_one();
    }
    // The end of the thread is awaited too, unless other callers keep it busy with lines of their
    // own.
    wait(held, [this, target] {
        const bool ends = thread_is_active_ && thread_is_to_end_ && pending_.empty();
        return written_ >= target && !ends;
    });
    if (!thread_is_active_)
        release_thread();
}

void log_queue::run() noexcept {
    std::string lines;
    lock held{mutex_};
    for (;;) {
        wake_.wait(held, [this] { return !pending_.empty() || thread_is_to_end_; });
        if (pending_.empty())
            break;
        lines.swap(pending_);
        const auto last = taken_;
        change_.notify_all(); // there is room again
        held.unlock();
        writer_.write(lines);
        lines.clear();
        held.lock();
        written_ = last;
        change_.notify_all();
    }
    writer_.close();
    thread_is_active_ = false;
    thread_is_to_end_ = false;
    change_.notify_all();
}

/// Sees to it that a thread will look at pending_. The caller writes the lines where the system has
/// none to give, and in a forked process: most of those end without a word to their libraries.
void log_queue::ensure_thread() noexcept {
    if (thread_is_active_)
        return;
    release_thread();
    if (other_threads_are_gone() || fork_generation() != 0)
        return write_pending();
    try {
        thread_ = start_background_thread([this] { run(); });
        thread_is_active_ = true;
    } catch (...) {
        write_pending();
    }
}

/// Requires: the thread is not active. It takes no lock any more then, so that this is short.
void log_queue::release_thread() noexcept {
    if (!thread_.joinable())
        return;
    if (other_threads_are_gone())
        return thread_.detach();
    thread_.join();
}

/// Does the thread's work in the caller's. Requires: the thread is not active.
void log_queue::write_pending() noexcept {
    writer_.write(pending_);
    writer_.close();
    pending_.clear();
    written_ = taken_;
    change_.notify_all();
}

/// Waits for a condition that the thread brings about, and does the thread's work if the system has
/// ended it.
template <typename Condition> void log_queue::wait(lock& held, Condition condition) noexcept {
    constexpr std::chrono::milliseconds interval{200};
    while (!change_.wait_for(held, interval, condition)) {
        if (!other_threads_are_gone())
            continue;
        thread_is_active_ = false;
        write_pending();
    }
}

} // namespace anvil
