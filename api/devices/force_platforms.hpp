// Functions of force platforms and rotations.
//
// | file            |                                                      |
// |-----------------|------------------------------------------------------|
// | force_platforms | what platforms are, and what their channels measured |
// | platforms       | one platform for the object view                     |
// | wrenches        | their wrenches                                       |
// | rotations       | rotations of segments                                |
// | set_rotation    | the rotations of one segment, replaced               |
// | sample_rows     | samples and numbers as arrays                        |

#pragma once

#include "store/python.hpp"

#include <strata/data_store.hpp>

#include "store/outputs.hpp"

namespace mox::devices {

/// All force platforms: a list of their descriptions ("channels", "corners", "origin", "type",
/// "cal_matrix") and one of the channels' information ("frequency", "units").
[[nodiscard]] outputs<2> force_platforms(strata::data_store acquisition);

} // namespace mox::devices
