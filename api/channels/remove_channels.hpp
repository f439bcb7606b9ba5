#pragma once

// Removing a channel, with all that follows from it.

#include <strata/data_group.hpp>
#include <strata/data_set.hpp>
#include <strata/data_store.hpp>

namespace mox {

/// Removes a point from the group that holds it; the points behind it move up.
void remove_point(const strata::data_store& acquisition, const strata::data_group& holder,
                  const strata::data_set& point);

/// Removes an analog channel; those behind it move up, and the force platforms name the channels
/// that they named.
void remove_analog(const strata::data_store& acquisition, const strata::data_set& channel);

} // namespace mox
