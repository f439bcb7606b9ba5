#pragma once

#include "store/python.hpp"

#include <string>
#include <vector>

#include <strata/data_store.hpp>

namespace mox::devices {

/// The labels of the segments that have rotations, in the store's order; none without a place for
/// segments.
[[nodiscard]] std::vector<std::string> rotation_labels(strata::data_store acquisition);

/// Samples of rotations in each frame, as Python counts; 1 where no file told another number.
[[nodiscard]] py_ref rotation_ratio(strata::data_store acquisition);

/// Samples of a segment's rotations, as Python counts. RuntimeError without such a segment.
[[nodiscard]] py_ref rotation_samples(strata::data_store acquisition, const std::string& label);

/// Replaces the rotations of a segment: a row a sample, the 16 elements of the homogeneous matrix
/// row by row. A sample with a NaN is one in which the segment was not seen: all of it becomes NaN
/// and its reliability −1; one that was not seen and now is gets the reliability 0, the others keep
/// theirs. What is written to a file follows. RuntimeError without such a segment and for a matrix
/// of another form; nothing has changed then.
void set_rotation(strata::data_store acquisition, const std::string& label, PyObject* matrix);

} // namespace mox::devices
