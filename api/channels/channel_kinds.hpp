#pragma once

// The kinds that the object view sorts channels by: the five kinds of points, all points, and the
// analog channels.

#include "store/python.hpp"

#include <string>
#include <vector>

#include <strata/data_group.hpp>
#include <strata/data_set.hpp>
#include <strata/data_store.hpp>

namespace mox::channels {

/// The groups that hold the channels of a kind: one, or five for all points, in the order of their
/// types. `kind` is "Markers", "Angles", "Forces", "Moments", "Powers", "Points" or "Analogs":
/// ValueError for any other. RuntimeError that names the path when a group is missing.
[[nodiscard]] std::vector<strata::data_group> groups_of_kind(const strata::data_store& acquisition,
                                                             const std::string& kind);

/// The one group of a kind; ValueError also for all points.
[[nodiscard]] strata::data_group group_of_kind(const strata::data_store& acquisition,
                                               const std::string& kind);

/// The channels of `groups`, a group after the other.
[[nodiscard]] std::vector<strata::data_set>
channels_of(const std::vector<strata::data_group>& groups);

/// Number of channels of a kind, as Python counts.
[[nodiscard]] py_ref count(strata::data_store acquisition, const std::string& kind);

} // namespace mox::channels
