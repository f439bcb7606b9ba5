#pragma once

#include "store/python.hpp"

#include <string>

#include <strata/data_store.hpp>

namespace mox::writing {

/// Writes the acquisition to the C3D file at `path`, a str, bytes or an os.PathLike; a file that is
/// there is replaced once the new one is complete, and kept when anything fails. `storage` and
/// `processor` are those of ask_for_form (file_form.hpp); with empty ones it is the file that
/// write_acquisition writes.
///
/// What is written is the acquisition as it was at the call: other threads run Python meanwhile,
/// and may change it. OSError when the system does not let the file be made, MemoryError,
/// ValueError when no file can hold the acquisition, another extension or another form is given.
/// RuntimeError without the plugin.
void write_file(strata::data_store acquisition, PyObject* path, const std::string& storage,
                const std::string& processor);

/// The same content as bytes.
[[nodiscard]] py_ref write_bytes(strata::data_store acquisition, const std::string& storage,
                                 const std::string& processor);

} // namespace mox::writing
