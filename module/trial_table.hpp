#pragma once

#include "store/python.hpp"

namespace mox {

/// The functions of `_moxPY.trial`, what the object view needs beyond the function table; lives as
/// long as the process.
[[nodiscard]] PyMethodDef* trial_table();

} // namespace mox
