#pragma once

// What the file's fourth word says of a point in each frame: its residual and the cameras that saw
// it. A word below 0 says that the point was not seen; else its low byte counts residuals in steps
// of the point scale, and the seven bits above are the cameras.

#include "store/python.hpp"

#include <strata/data_set.hpp>
#include <strata/data_store.hpp>

namespace mox::points {

/// The residuals of a point, (frames,), in the unit of points and not writable: 0 where nothing is
/// known, −1 where the point was not seen. KeyError when the point is no part of the acquisition,
/// ValueError for an analog channel.
[[nodiscard]] py_ref residuals(strata::data_store acquisition, strata::data_set point);

/// Whether each of the seven cameras saw the point, (frames, 7), not writable.
[[nodiscard]] py_ref cameras(strata::data_store acquisition, strata::data_set point);

/// Gives `point` the residuals and masks of `original`, which may be of another acquisition: where
/// `point` is seen and `original` was not, it counts as computed. Residuals stay what they are
/// where the acquisitions count them in other steps, as near as those of this one come to them; one
/// that has counted none yet takes the steps of `source`. Nothing happens where `original` has none
/// or another number of frames.
void carry_residuals(strata::data_store acquisition, strata::data_set point,
                     strata::data_store source, strata::data_set original);

/// Multiplies the residuals of all points, as when their unit becomes another one. The steps that
/// words count become others, the words stay.
void multiply_residuals(strata::data_store acquisition, double factor);

} // namespace mox::points
