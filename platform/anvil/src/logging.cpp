#include <anvil/logging.hpp>

#include <atomic>
#include <mutex>
#include <utility>

#include "platform/anvil/src/process.hpp"

namespace anvil {

namespace {

/// What the process's loggers share.
struct shared_state {
    std::mutex mutex; ///< guards sink and registry; free in a forked child
    std::shared_ptr<log_sink> sink;
    logger_registry* registry = nullptr;
    std::atomic<int> level = static_cast<int>(log_level::info);
};

/// Made when the library is loaded and never destroyed: lines may be given until the very end of
/// the process.
// NOLINTNEXTLINE(bugprone-throwing-static-initialization): without memory, nothing can be loaded
shared_state& shared = *new shared_state;

using state_lock = std::lock_guard<std::mutex>;

std::shared_ptr<log_sink> default_sink() noexcept {
    const state_lock lock{shared.mutex};
    return shared.sink;
}

void flush_default_sink() noexcept {
    if (const auto sink = default_sink())
        sink->flush();
}

/// Made when the library is loaded, hence destroyed after everything that was made by code that
/// uses the library.
struct process_hooks {
    process_hooks() {
        // Drained first: either of the two processes may end without a word to its libraries.
        on_fork(
            [] {
                flush_default_sink();
                shared.mutex.lock();
            },
            [] { shared.mutex.unlock(); });
        on_quick_exit([] { flush_default_sink(); });
    }
    process_hooks(const process_hooks&) = delete;
    process_hooks& operator=(const process_hooks&) = delete;
    /// Drains the sink. Later lines are dropped.
    ~process_hooks() { install_default_log_sink(nullptr); }
};

// NOLINTNEXTLINE(bugprone-throwing-static-initialization): as above
const process_hooks hooks;

} // namespace

log_sink::~log_sink() = default;

log_stream::log_stream(std::string name) : name_{std::move(name)} {}

bool log_stream::should_log(log_level level) const noexcept {
    return level < log_level::off && static_cast<int>(level) >= shared.level.load();
}

void log_stream::sink_it(log_level level, const log_msg& message) noexcept {
    if (!should_log(level))
        return;
    if (const auto sink = default_sink())
        sink->sink_it({message.logger_name, level, message.text});
}

void log_stream::flush() noexcept { flush_default_sink(); }

void install_logger_registry(logger_registry* registry) noexcept {
    const state_lock lock{shared.mutex};
    shared.registry = registry;
}

bool register_logger(std::shared_ptr<log_stream> logger, bool replace) {
    if (!logger)
        return false;
    const state_lock lock{shared.mutex};
    if (shared.registry == nullptr)
        return false;
    // The strings are compared before anything is changed; a logger that is replaced ends with the
    // argument.
    const auto [place, added] = shared.registry->try_emplace(logger->name(), logger);
    if (!added && replace)
        place->second.swap(logger);
    return added || replace;
}

void install_default_log_sink(std::shared_ptr<log_sink> sink) noexcept {
    {
        const state_lock lock{shared.mutex};
        shared.sink.swap(sink);
    }
    // Drained here and not left to the destructor: after a fork the copies that other threads held
    // are never released.
    if (sink)
        sink->flush();
}

void set_default_log_level(int level) noexcept { shared.level = level; }

std::shared_ptr<log_stream> make_default_logger(const std::string& name) {
    return std::make_shared<log_stream>(name);
}

void log_line(log_stream& logger, log_level level, std::string_view text) noexcept {
    if (logger.should_log(level))
        logger.sink_it(level, {logger.name(), level, text});
}

} // namespace anvil
