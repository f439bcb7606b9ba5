#pragma once

#include "store/python.hpp"

#include <string>

#include <strata/data_store.hpp>

#include "store/outputs.hpp"

namespace mox::devices {

// Each gives a list with a dictionary a platform: "F", "M" and "P", arrays of (samples, 3) in the
// laboratory; NaN where a platform has no wrench. RuntimeError when there are platforms but the
// analog channels of their file were not read.

/// At the hardware origins.
[[nodiscard]] py_ref platform_wrenches(strata::data_store acquisition);

/// `in_global_frame` 1 gives the same; RuntimeError for 0, which is not supported yet, and for
/// every other number.
[[nodiscard]] py_ref platform_wrenches_in_frame(strata::data_store acquisition,
                                                int in_global_frame);

/// At the points of application.
[[nodiscard]] py_ref ground_reaction_wrenches(strata::data_store acquisition);

/// RuntimeError when the threshold is negative or NaN.
[[nodiscard]] py_ref ground_reaction_wrenches_over(strata::data_store acquisition,
                                                   const double& fz_threshold);

/// Force, moment and point of the platform of an index, from 0, as arrays of (samples, 3) that are
/// not writable; NaN where it has no wrench. `place` is "cop" or "origin", `axes` is "lab" or
/// "plate": its own axes at the centre of its surface. ValueError for any other text and for a
/// threshold that is negative or NaN, or when analog channels of the file were not read; IndexError
/// without such a platform.
[[nodiscard]] outputs<3> wrench_of_platform(strata::data_store acquisition, int index,
                                            const std::string& place, const std::string& axes,
                                            double fz_threshold);

} // namespace mox::devices
