#pragma once

#include <anvil/json.hpp>
#include <anvil/status.hpp>

#include <strata/data_group.hpp>
#include <strata/plugin/plugin.hpp>

#include "schema/computations.hpp"

namespace c3d {

/// Makes a group for each segment of the rotations that the importer read.
///
/// Parameters: "SourceGroup", the group that holds `Data` (usually "Format"), and
/// "DestinationGroup". There, the group `Segments` is made, empty when the file has no rotations;
/// what it held before is replaced. It gets a group for each segment, named by its label, with the
/// `float64` set `T_SCS` of shape {4, 4, samples}: column, row, sample. Transposed, element
/// [sample][row][column] belongs to the homogeneous matrix that takes points of the segment to the
/// laboratory. All elements of an invalid sample are NaN.
///
/// Attributes of the set: `Label`, `SampleRate`, `StartTime` and `Reliability` (float32, an element
/// for each sample; negative or NaN where the sample is invalid).
class detect_rotations final : public strata::callable_unit {
  public:
    static constexpr const char* id = schema::computation::detect_rotations;

    [[nodiscard]] anvil::status evaluate(strata::data_group& target,
                                         const anvil::json& parameters) const override;
};

} // namespace c3d
