#pragma once

#include <nlohmann/json.hpp>

namespace anvil {

/// Parameters of callable units and descriptions of metadata.
using json = nlohmann::json;

} // namespace anvil
