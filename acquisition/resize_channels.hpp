#pragma once

#include <cstdint>
#include <vector>

#include <strata/data_group.hpp>

namespace mox {

/// A device group and the number of samples that it is to have.
struct group_extent {
    strata::data_group group;
    std::uint64_t samples;
};

/// Gives each group and each of its sets the samples asked for. Samples that come to be are NaN in
/// "Mocap" groups and 0 otherwise; residuals follow, and are −1 there. Throws std::bad_alloc before
/// anything changes when memory is short.
void resize_device_groups(const std::vector<group_extent>& extents);

/// Throws std::bad_alloc unless the memory for resize_device_groups can be had; changes nothing.
void require_memory(const std::vector<group_extent>& extents);

/// What a channel takes beside its samples, generously, in doubles.
inline constexpr double channel_overhead = 512.0;

/// Throws std::bad_alloc unless memory for `elements` doubles can be had. The count is a real
/// number, so that no product of counts overflows.
void require_memory(double elements);

} // namespace mox
