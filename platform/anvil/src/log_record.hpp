#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include <anvil/logging.hpp>

namespace anvil {

/// Adds `2026-01-31T12:34:56.789Z [level] [logger] [process id] text` and a line end to `lines`.
/// One message is one line: line ends in it are written `\n` and `\r`, other control characters but
/// the tab `\x1B`. Strong guarantee: `lines` is unchanged when memory runs out.
void append_log_record(std::string& lines, std::chrono::system_clock::time_point time,
                       std::uint64_t process, const log_msg& message);

} // namespace anvil
