// Functions of points.
//
// | file             |                                                  |
// |------------------|--------------------------------------------------|
// | read_points      | what they are                                    |
// | residuals        | residuals and cameras of a point                 |
// | set_point_values | new coordinates                                  |
// | modify_points    | new points, other labels and kinds, fewer points |

#pragma once

#include "store/python.hpp"

#include <string>

#include <strata/data_store.hpp>

#include "store/outputs.hpp"

namespace mox::points {

/// All points of one type: {set name: frames × 3 array}, and their information ("frequency",
/// "units").
[[nodiscard]] outputs<2> markers(strata::data_store acquisition);
[[nodiscard]] outputs<2> angles(strata::data_store acquisition);
[[nodiscard]] outputs<2> forces(strata::data_store acquisition);
[[nodiscard]] outputs<2> moments(strata::data_store acquisition);
[[nodiscard]] outputs<2> powers(strata::data_store acquisition);

/// All points: the same with "firstFrame", "label" and "description" in the information.
[[nodiscard]] outputs<2> all(strata::data_store acquisition);

/// One point: frames × 3 array, and its information. RuntimeError when there is no such point.
[[nodiscard]] outputs<2> by_index(strata::data_store acquisition, int index);
[[nodiscard]] outputs<2> by_label(strata::data_store acquisition, const std::string& label);

/// Points as one float64 matrix of frames × 3 columns a point, in ascending index; without points
/// an array without dimensions.
[[nodiscard]] py_ref markers_values(strata::data_store acquisition);
[[nodiscard]] py_ref angles_values(strata::data_store acquisition);
[[nodiscard]] py_ref forces_values(strata::data_store acquisition);
[[nodiscard]] py_ref moments_values(strata::data_store acquisition);
[[nodiscard]] py_ref powers_values(strata::data_store acquisition);
[[nodiscard]] py_ref all_values(strata::data_store acquisition);

/// Unit of the first point of the group called `group_name` ("Markers", …); empty for an unknown
/// name or a group without points.
[[nodiscard]] std::string unit(strata::data_store acquisition, const std::string& group_name);

/// Number of points of all types.
[[nodiscard]] double number(strata::data_store acquisition);

} // namespace mox::points
