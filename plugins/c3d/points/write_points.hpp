#pragma once

#include <cstddef>
#include <span>

#include "plugins/c3d/parameters/parameter_tree.hpp"
#include "plugins/c3d/points/point_columns.hpp"
#include "schema/warnings.hpp"

namespace c3d {

/// Makes the parameters of POINT tell what the points are: USED, LABELS, DESCRIPTIONS, UNITS, the
/// lists of the kinds (ANGLES, FORCES …) and their units. A list from which a reader would already
/// take the same stays as it is. A list of a kind that has no points is removed.
///
/// `labels_read`: the labels of the file that was read; entries of the lists that mean none of them
/// are kept.
void put_points(parameter_tree& tree, std::span<const point_column> points,
                std::span<const std::string> labels_read, schema::warnings& notes);

} // namespace c3d
