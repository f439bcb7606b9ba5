#include <anvil/log_sink_file_threaded.hpp>

#include <atomic>
#include <filesystem>
#include <utility>

#include <anvil/path_text.hpp>

#include "platform/anvil/src/log_queue.hpp"

namespace anvil {

namespace {

/// Not to be followed by what the program makes its current folder later.
std::filesystem::path absolute_path(const std::string& text) {
    auto path = path_from_text(text);
    std::error_code error;
    auto absolute = std::filesystem::absolute(path, error);
    return error ? path : absolute;
}

} // namespace

/// Finds the queue of the running process: the one that was made here, or after a fork a new one.
class log_sink_file_threaded::worker {
  public:
    worker(std::filesystem::path path, bool append_and_rotate)
        : path_{std::move(path)}, append_and_rotate_{append_and_rotate} {
        // Here and not with the first line, so that no process forked meanwhile loses its lines.
        if (!append_and_rotate)
            empty_log_file(path_);
    }
    worker(const worker&) = delete;
    worker& operator=(const worker&) = delete;

    ~worker() {
        log_queue* queue = existing_queue();
        delete queue;
    }

    /// The running process's queue, or null if it has logged nothing.
    [[nodiscard]] log_queue* existing_queue() const noexcept {
        log_queue* queue = queue_.load();
        return queue != nullptr && queue->is_ours() ? queue : nullptr;
    }

    /// The running process's queue; null when there is no memory for one.
    [[nodiscard]] log_queue* queue() noexcept {
        log_queue* found = queue_.load();
        if (found != nullptr && found->is_ours())
            return found;
        try {
            // A queue that came here by fork is never freed: its thread is missing, its mutex may
            // be locked, and its lines are the parent's to write.
            auto made = std::make_unique<log_queue>(path_, append_and_rotate_);
            // Another thread may have been faster; then `found` is that thread's queue.
            if (queue_.compare_exchange_strong(found, made.get()))
                return made.release();
            return found;
        } catch (...) {
            return nullptr;
        }
    }

  private:
    const std::filesystem::path path_;
    const bool append_and_rotate_;
    std::atomic<log_queue*> queue_ = nullptr; // owned where it is_ours()
};

log_sink_file_threaded::log_sink_file_threaded(const std::string& path, bool append_and_rotate)
    : worker_{std::make_unique<worker>(absolute_path(path), append_and_rotate)} {}

log_sink_file_threaded::~log_sink_file_threaded() = default;

void log_sink_file_threaded::sink_it(const log_msg& message) noexcept {
    if (log_queue* queue = worker_->queue())
        queue->take(message);
}

void log_sink_file_threaded::flush() noexcept {
    if (log_queue* queue = worker_->existing_queue())
        queue->flush();
}

} // namespace anvil
