// Wrenches of force platforms.
//
// | file                   |                                                 |
// |------------------------|-------------------------------------------------|
// | ground_reaction_wrench | the unit                                        |
// | wrench_parameters      | what it is asked for                            |
// | measured_platform      | what a platform's group says                    |
// | sample_block           | force, moment and point, some samples at a time |
// | plugin                 | what the plugin offers                          |

#pragma once

#include <anvil/json.hpp>
#include <anvil/status.hpp>

#include <strata/data_group.hpp>
#include <strata/plugin/plugin.hpp>

#include "schema/computations.hpp"

namespace classical_mechanics {

/// Computes what a force platform measured as one wrench set: force, moment and point of each
/// sample.
///
/// Parameters:
///
/// - "SourceGroup": path of the platform's group. It has the attributes `Type`, `Corners` and
///   `Origin`, of type 4 also `CalibrationMatrix`, of type 3 possibly `CenterOfPressurePolynomial`,
///   and the group `Channels` with the sets of the channels in the order of the type;
/// - "DestinationGroup": path of the wrench set, which is replaced when it exists. It starts at the
///   root, or, when there is no group to hold it, at the group that holds the platform's;
/// - "FzThreshold": least absolute force along the platform's z axis that has a point of
///   application;
/// - "GlobalTransformation": true for the laboratory's axes and origin, false for the platform's
///   axes at the centre of its surface;
/// - "Location": "hardware-origin" for the moment about the measuring origin and that origin as the
///   point; "point-of-application" for the free moment and the point of application on the
///   surface. Under the threshold that point is NaN, and the moment is the one about the measuring
///   origin.
///
/// The set is `float64` of the shape {9, 1, samples}: Fx Fy Fz, Mx My Mz, Px Py Pz. It gets the
/// attributes `SampleRate` and `StartTime` of the first channel. The signs are those of the
/// channels.
class ground_reaction_wrench final : public strata::callable_unit {
  public:
    static constexpr const char* id = schema::computation::ground_reaction_wrench;

    [[nodiscard]] anvil::status evaluate(strata::data_group& target,
                                         const anvil::json& parameters) const override;
};

} // namespace classical_mechanics
