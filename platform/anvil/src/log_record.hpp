#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include <anvil/logging.hpp>

namespace anvil {

/// Adds `2026-01-31T12:34:56.789Z [level] [logger] [process id] text` and a line end to `lines`.
/// One message is one line: it and the logger's name are escaped (escaped_text.hpp). Strong
/// guarantee: `lines` is unchanged when memory runs out.
void append_log_record(std::string& lines, std::chrono::system_clock::time_point time,
                       std::uint64_t process, const log_msg& message);

} // namespace anvil
