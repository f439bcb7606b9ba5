// What FORCE_PLATFORM says; schema/force_platform_table.hpp reads it.
//
// | file                    |                                                  |
// |-------------------------|--------------------------------------------------|
// | forceplate_detect       | the unit that makes a platform's group of it     |
// | write_platform_channels | FORCE_PLATFORM:CHANNEL of a file that is written |

#pragma once

#include <anvil/json.hpp>
#include <anvil/status.hpp>

#include <strata/data_group.hpp>
#include <strata/plugin/plugin.hpp>

#include "schema/computations.hpp"

namespace c3d {

/// Makes the group of one force platform from the FORCE_PLATFORM parameters and the analog
/// channels, so that whoever computes wrenches needs that group alone.
///
/// Parameters: "SourceGroup", the group of the analog channels; "MetadataSourceGroup", the group
/// that holds `Format/Metadata` ("" for the root); "DestinationGroup", the platform's group, which
/// is replaced when it exists; "ForceplateIndex", from 0.
///
/// The group gets the attributes
///
/// - `Type` (int32): 1 to 4;
/// - `Corners` (float64, {4, 3}): as stored;
/// - `Origin` (float64, {3}): from the measuring origin to the centre of the surface in the
///   platform's axes, its sign repaired; of type 3 the sensors' distances from the axes in the
///   first two numbers;
/// - `CalibrationMatrix` (float64, {6, 6}, row by row), of type 4 alone;
/// - `CenterOfPressurePolynomial` (float64, {12}), of type 3 alone, where the file has one,
///
/// and the group `Channels`: the channels' own sets, linked, in the order of the type, under names
/// that tell what they measure ("Fx", "Fz1").
///
/// Fails, without a group, for other types, for corners that span no plane, for a missing ORIGIN
/// (which type 1 does without) and where a channel is missing.
class forceplate_detect final : public strata::callable_unit {
  public:
    static constexpr const char* id = schema::computation::detect_platform;

    [[nodiscard]] anvil::status evaluate(strata::data_group& target,
                                         const anvil::json& parameters) const override;
};

} // namespace c3d
