// Force platforms as they are now.
//
// | file                     |                                                   |
// |--------------------------|---------------------------------------------------|
// | force_platforms          | brings all that depends on them up to date        |
// | platform_detection       | the group of each platform                        |
// | platform_remarks         | what is odd about the channels, told once         |
// | platform_channel_numbers | FORCE_PLATFORM:CHANNEL while channels are removed |
// | platform_wrench          | the wrench of one of them                         |

#pragma once

#include <optional>
#include <vector>

#include <strata/data_group.hpp>
#include <strata/data_set.hpp>

#include "schema/force_platform_table.hpp"

namespace mox {

/// A force platform as it is now.
struct platform_state {
    schema::force_platform described;        ///< by the parameters
    std::vector<strata::data_set> channels;  ///< those that exist, in the order of the table
    std::optional<strata::data_group> group; ///< its wrench sets are in; none if not detected
};

/// Brings all that depends on the force platforms in line with the parameters and the analog
/// channels:
///
/// - `Devices/ForcePlate/FP<i>`: the group of each platform that can be detected. It is kept while
///   the parameters and the channels it refers to are the same, and made anew otherwise;
/// - the analog channels: `RelativeSetIndex` without gaps, first the channels that ANALOG:LABELS
///   names, in its order, then the others in the order they had; `DevicesIndex`, the platform that
///   uses the channel, on those that one uses.
///
/// What cannot be detected is a line in the log, once, and has no group. Doing it again without a
/// change between gives the same. Without FORCE_PLATFORM nothing of that is there. Throws
/// std::bad_alloc when memory is short. The cost is linear in what the acquisition holds.
///
/// Gives all platforms.
std::vector<platform_state> bring_platforms_up_to_date(strata::data_group root);

/// All platforms as the parameters describe them now, without groups. Changes nothing.
[[nodiscard]] std::vector<platform_state> describe_platforms(const strata::data_group& root);

/// The channels that a platform's table names, in its order; a handle that denotes nothing for each
/// one that is not there. `columns`: the sets of the analog columns.
[[nodiscard]] std::vector<strata::data_set>
channels_by_place(const schema::force_platform& platform,
                  const std::vector<strata::data_set>& columns);

} // namespace mox
