#pragma once

// Rows of the probe's function table, a file of functions each.

#include "store/python.hpp"

#include <vector>

namespace mox::probe {

[[nodiscard]] std::vector<PyMethodDef> frame_functions();  ///< every parameter type and failure
[[nodiscard]] std::vector<PyMethodDef> tree_functions();   ///< the tree as it is
[[nodiscard]] std::vector<PyMethodDef> typed_functions();  ///< native values
[[nodiscard]] std::vector<PyMethodDef> value_functions();  ///< Python values
[[nodiscard]] std::vector<PyMethodDef> path_functions();   ///< groups by path, sets, rebuilding
[[nodiscard]] std::vector<PyMethodDef> layout_functions(); ///< device groups and channels

} // namespace mox::probe
