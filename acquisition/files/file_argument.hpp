#pragma once

#include "store/python.hpp"

#include <string>

#include <anvil/status.hpp>

namespace mox {

/// The text of a file path, as bytes of the file system's encoding. TypeError when `path` is not a
/// str.
[[nodiscard]] std::string path_argument(PyObject* path);

/// The same of a str, bytes or an os.PathLike. TypeError for any other, ValueError for a NUL in it.
[[nodiscard]] std::string bytes_of_path(PyObject* path);

/// Raises the failure of an import or export: `introduction` and its messages, each but the first
/// on a line of its own behind a tab and a dash. MemoryError when memory was short, else
/// RuntimeError.
[[noreturn]] void throw_failure(const anvil::status& status, const std::string& introduction = {});

} // namespace mox
