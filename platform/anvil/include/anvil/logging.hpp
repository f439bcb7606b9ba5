#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include <anvil/export.hpp>

namespace anvil {

/// Severity of a line; 0 is the most verbose.
enum class log_level : int {
    trace = 0,
    debug = 1,
    info = 2,
    warning = 3,
    error = 4,
    critical = 5,
    off = 6
};

/// One line on its way to a sink.
struct log_msg {
    std::string_view logger_name; ///< name of the logger that the line was given to
    log_level level;              ///< severity
    std::string_view text;        ///< formatted text, UTF-8, without line end
};

/// Where lines end up. Implementations are thread-safe and never throw.
class ANVIL_EXPORT log_sink {
  public:
    log_sink() = default;
    log_sink(const log_sink&) = delete;
    log_sink& operator=(const log_sink&) = delete;
    virtual ~log_sink();

    virtual void sink_it(const log_msg& message) noexcept = 0;

    /// Returns once every line taken before the call is where other processes can read it.
    virtual void flush() noexcept = 0;
};

/// A named source of lines. Made by make_default_logger, it follows the process's default sink and
/// level as they are when a line is given. Thread-safe; no member throws.
class ANVIL_EXPORT log_stream {
  public:
    explicit log_stream(std::string name);

    /// True when a line of this severity would not be dropped for its level; never for `off`.
    [[nodiscard]] bool should_log(log_level level) const noexcept;
    [[nodiscard]] const std::string& name() const noexcept { return name_; }
    /// Hands `message` to the sink with severity `level`, unless should_log(level) is false.
    void sink_it(log_level level, const log_msg& message) noexcept;
    void flush() noexcept;

  private:
    std::string name_;
};

/// Loggers by name. Owned by the application; the library only keeps a pointer to it.
using logger_registry = std::unordered_map<std::string, std::shared_ptr<log_stream>>;

/// Makes `registry` the process's registry; null uninstalls it. The registry must outlive its
/// installation.
ANVIL_EXPORT void install_logger_registry(logger_registry* registry) noexcept;

/// Adds `logger` under its name to the process's registry. A logger of that name is kept unless
/// `replace`. False when it was not added, also when no registry is installed.
ANVIL_EXPORT bool register_logger(std::shared_ptr<log_stream> logger, bool replace);

/// Makes `sink` the process's default sink; null drops lines. The former sink is drained and
/// released. At the end of the process the last sink is, after everything that was made by code
/// that uses this library.
ANVIL_EXPORT void install_default_log_sink(std::shared_ptr<log_sink> sink) noexcept;

/// Lines below `level` are dropped from now on. The level is `info` until this is called.
ANVIL_EXPORT void set_default_log_level(int level) noexcept;

/// A logger that writes to the default sink.
[[nodiscard]] ANVIL_EXPORT std::shared_ptr<log_stream> make_default_logger(const std::string& name);

/// The one formatting routine of the libraries: gives `text` to `logger` when its level is wanted.
ANVIL_EXPORT void log_line(log_stream& logger, log_level level, std::string_view text) noexcept;

} // namespace anvil
