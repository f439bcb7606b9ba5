#pragma once

// One platform at a time, as the object view looks at them. Looking changes nothing.

#include "store/python.hpp"

#include <optional>
#include <vector>

#include <strata/data_set.hpp>
#include <strata/data_store.hpp>

#include "acquisition/platforms/force_platforms.hpp"

namespace mox::devices {

/// The platform of an index, from 0. IndexError without such a one.
[[nodiscard]] const platform_state& platform_at(const std::vector<platform_state>& platforms,
                                                int index);

/// Number of platforms, as Python counts.
[[nodiscard]] py_ref platform_count(strata::data_store acquisition);

/// A dictionary of what the parameters say of a platform, and what follows from that; arrays are
/// not writable:
/// - "type": an int;
/// - "unread": None, or where the analog channels were left out when the file was read a list, the
///   labels of those of the platform in the order of its table;
/// - "corners" (4, 3) and "origin" (3,): NaN where the parameters lack them;
/// - "calibration": a square matrix, None without one;
/// - "frame" (4, 4): what takes places in the platform's axes at the centre of its surface to the
///   laboratory, NaN when the corners span no plane.
/// IndexError without a platform of that index.
[[nodiscard]] py_ref platform_description(strata::data_store acquisition, int index);

/// The channels of a platform in the order of its table; nothing in the place of one that is not
/// there. IndexError as above.
[[nodiscard]] std::vector<std::optional<strata::data_set>>
platform_channels(strata::data_store acquisition, int index);

} // namespace mox::devices
