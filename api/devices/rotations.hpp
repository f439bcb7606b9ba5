#pragma once

#include "store/python.hpp"

#include <string>

#include <strata/data_store.hpp>

#include "store/outputs.hpp"

namespace mox::devices {

/// The rotations of all segments, {label: array of (samples, 4, 4)}; the second output stays empty.
/// RuntimeError when the acquisition has no place for them.
[[nodiscard]] outputs<2> rotations(strata::data_store acquisition);

/// Those of one segment; RuntimeError also when there is none of that label, compared exactly.
[[nodiscard]] outputs<2> rotation(strata::data_store acquisition, const std::string& label);

} // namespace mox::devices
