#pragma once

#include <memory>
#include <string>

#include <anvil/export.hpp>
#include <anvil/logging.hpp>

namespace anvil {

/// Lines appended to a text file by a thread of the sink's own.
///
/// A line reads `2026-01-31T12:34:56.789Z [level] [logger] [process id] text`; control characters
/// in it but the tab are written as `\n`, `\r`, `\x1B` or `\u0085`, marks that change the direction
/// of writing likewise, and a backslash twice, so that one message is one line that looks as it
/// reads. Lines of several processes that share the file stay whole. The file and its folders are
/// created with the first line, for the user alone; rights that they have beyond that are taken
/// from the file, and from a folder that holds nothing else. A file that cannot be written silently
/// takes no lines and is tried again ten seconds later. The thread starts with a line and ends with
/// the next flush, which also closes the file. In a forked child process, which mostly ends
/// without a word to its libraries, lines are written at once. The destructor drains the queue.
class ANVIL_EXPORT log_sink_file_threaded final : public log_sink {
  public:
    /// Logs to `path` (UTF-8; a relative one starts from the folder that is current now). With
    /// `append_and_rotate`, lines are added to what the file holds, and a file that has reached
    /// 5 MiB is renamed to `<path>.1` (replacing an older one) before the next lines; otherwise
    /// what the file holds is dropped now, and the file grows.
    log_sink_file_threaded(const std::string& path, bool append_and_rotate);
    ~log_sink_file_threaded() override;

    void sink_it(const log_msg& message) noexcept override;
    void flush() noexcept override;

  private:
    class worker;
    std::unique_ptr<worker> worker_;
};

} // namespace anvil
