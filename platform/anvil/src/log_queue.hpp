#pragma once

#include <condition_variable>
#include <cstdint>
#include <filesystem>
#include <mutex>
#include <string>
#include <thread>

#include <anvil/logging.hpp>

#include "platform/anvil/src/log_writer.hpp"
#include "platform/anvil/src/process.hpp"

namespace anvil {

/// Lines on their way to a file, and the thread that writes them. Thread-safe; no member but the
/// constructor throws.
///
/// The thread lives from a line to the next flush, so that a program that flushes after its lines
/// is left without a thread and without an open file. In a forked process there is none: lines are
/// written before `take` returns. A queue belongs to the process that made it:
/// in a forked child it must not be touched, not even destroyed, because its mutex may be locked by
/// a thread that the child does not have.
class log_queue {
  public:
    log_queue(std::filesystem::path path, bool sets_aside);
    log_queue(const log_queue&) = delete;
    log_queue& operator=(const log_queue&) = delete;
    /// Writes what is left. Requires: no other thread uses the queue.
    ~log_queue();

    /// True in the process that made the queue.
    [[nodiscard]] bool is_ours() const noexcept { return generation_ == fork_generation(); }

    /// Adds a line; waits while the thread is far behind. Drops the line when memory runs out.
    void take(const log_msg& message) noexcept;

    /// Returns once the lines taken before the call are written.
    void flush() noexcept;

  private:
    using lock = std::unique_lock<std::mutex>;

    void run() noexcept;
    void ensure_thread() noexcept;
    void release_thread() noexcept;
    void write_pending() noexcept;
    template <typename Condition> void wait(lock& held, Condition condition) noexcept;

    const std::uint64_t generation_ = fork_generation();
    const std::uint64_t process_ = process_id();

    std::mutex mutex_;               // guards what follows
    std::condition_variable wake_;   // for the thread: lines are pending, or it is to end
    std::condition_variable change_; // for the others: lines were written, or the thread ended
    std::string pending_;            // lines not yet seen by the thread
    std::uint64_t taken_ = 0;        // lines so far
    std::uint64_t written_ = 0;      // of these, written or dropped
    bool thread_is_active_ = false;  // the thread will look at pending_ again
    bool thread_is_to_end_ = false;  // once nothing is pending

    std::thread thread_;
    log_writer writer_; // the thread's while it is active, else guarded by mutex_
};

} // namespace anvil
