#pragma once

#include <optional>
#include <vector>

#include <strata/data_group.hpp>
#include <strata/data_set.hpp>

#include "layout/force_platform_table.hpp"

namespace mox {

inline constexpr double default_fz_threshold = 10.0; // in the unit of the force channels

/// A force platform as it is now.
struct platform_state {
    acquisition_layout::force_platform described; ///< by the parameters
    std::vector<strata::data_set> channels;       ///< those that exist, in the order of the table
    std::optional<strata::data_group> group;      ///< its wrench sets are in; none if not detected
};

/// Brings all that depends on the force platforms in line with the parameters and the analog
/// channels:
///
/// - `Devices/ForcePlate/FP<i>`: the group of each platform that can be detected. It is kept while
///   the parameters and the channels it refers to are the same, and made anew otherwise;
/// - the analog channels: `RelativeSetIndex` without gaps, first the channels that ANALOG:LABELS
///   names, in its order, then the others in the order they had; `DevicesIndex`, the platform that
///   uses the channel, on those that one uses;
/// - the sets `W_HO`, `W_HO^LCS`, `W_POA` and `W_POA^LCS` of each group: computed anew.
///
/// What cannot be detected or computed is a line in the log, and has no group or no set. Doing it
/// again without a change between gives the same. Without FORCE_PLATFORM nothing happens.
///
/// Gives all platforms. `fz_threshold`, not negative: least absolute Fz that has a point of
/// application.
std::vector<platform_state> bring_platforms_up_to_date(strata::data_group root,
                                                       double fz_threshold = default_fz_threshold);

} // namespace mox
