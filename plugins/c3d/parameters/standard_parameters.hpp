#pragma once

#include "plugins/c3d/parameters/parameter_tree.hpp"

namespace c3d {

/// Gives the parameters of an acquisition that was not read what every file should have beside the
/// description of its samples (ANALOG:FORMAT and BITS), and the usual order: in POINT, ANALOG and
/// FORCE_PLATFORM first what the format defines, then what a script has added.
void complete_new_parameters(parameter_tree& tree);

} // namespace c3d
