#pragma once

#include "store/python.hpp"

#include <string>

#include <anvil/status.hpp>

namespace mox {

/// The text of a file path, as bytes of the file system's encoding. TypeError when `path` is not a
/// str.
[[nodiscard]] std::string path_text(PyObject* path);

/// The messages of a failed import or export, each but the first on a line of its own behind a tab
/// and a dash.
[[nodiscard]] std::string failure_text(const anvil::status& status);

} // namespace mox
