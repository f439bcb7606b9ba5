#pragma once

#include "store/python.hpp"

#include <string>
#include <system_error>

namespace mox {

/// Raises the OSError of a file that the system did not open, read or write: of the kind that
/// Python has for the reason (FileNotFoundError, PermissionError, …), with the reason and the path.
[[noreturn]] void throw_os_failure(const std::error_code& reason, const std::string& path);

} // namespace mox
