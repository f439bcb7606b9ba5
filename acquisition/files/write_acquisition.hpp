#pragma once

#include "store/python.hpp"

#include <strata/data_store.hpp>

namespace mox::writing {

/// Writes the acquisition to the C3D file that `path`, a str, names; a file that is there is
/// replaced once the new one is complete, and kept when anything fails. Force platforms and the
/// order of the analog channels are brought up to date first.
/// TypeError when `path` is not a str; RuntimeError when the extension is another, only a part of
/// the acquisition's own file was read, the frequency is not set, points and analog channels
/// contradict each other, the file cannot be made, or the exporter fails.
void write_acquisition(strata::data_store acquisition, PyObject* path);

} // namespace mox::writing
