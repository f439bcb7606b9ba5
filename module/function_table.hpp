#pragma once

#include "store/python.hpp"

namespace mox {

/// Every Python function of the module in the order of registration, ended by an empty row.
[[nodiscard]] PyMethodDef* function_table();

} // namespace mox
