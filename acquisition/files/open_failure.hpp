#pragma once

#include <string>
#include <system_error>

namespace mox {

/// Raises RuntimeError with `text`, which says which file was not opened; the log has the reason of
/// the system behind it.
[[noreturn]] void throw_open_failure(const std::string& text, const std::error_code& reason);

} // namespace mox
