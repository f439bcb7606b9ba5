#pragma once

#include <cstdint>
#include <vector>

#include <strata/data_group.hpp>
#include <strata/data_set.hpp>

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

/// Throws std::bad_alloc unless the memory for resize_device_groups, and for `others` doubles
/// beside it, can be had; changes nothing.
void require_memory(const std::vector<group_extent>& extents, double others = 0.0);

/// Makes the samples of a channel set from `first` on NaN, in blocks, which take next to no memory
/// beside the set.
void fill_with_nan(const strata::data_set& set, std::uint64_t first);

/// Gives the attribute `name` of a set, where it has that, one float32 a sample; −1 for new ones.
void resize_reliabilities(strata::data_set set, const char* name, std::uint64_t samples);

/// What a channel takes beside its samples, generously, in doubles.
inline constexpr double channel_overhead = 512.0;

/// Throws std::bad_alloc unless memory for `elements` doubles can be had. The count is a real
/// number, so that no product of counts overflows.
void require_memory(double elements);

} // namespace mox
