#pragma once

// The common sequence of indices that channels carry, and what removing and adding does to it.

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <strata/data_group.hpp>
#include <strata/data_set.hpp>

namespace mox {

/// Removes `set` from `holder` and takes 1 off every greater index in `groups`.
void remove_channel(const strata::data_group& holder, const strata::data_set& set,
                    const std::vector<strata::data_group>& groups);

/// Of `count` channels in `groups`, deletes those whose index is at least `count` − `wanted`, in
/// 32-bit arithmetic: `count` − `wanted` channels stay, not `wanted`. Scripts rely on it.
void shrink_channels(const std::vector<strata::data_group>& groups, std::int32_t count,
                     std::int32_t wanted);

/// Names for channels without label that are added to a group in ascending index. Numbers that were
/// found taken are not tried again.
class unused_channel_names {
  public:
    explicit unused_channel_names(strata::data_group group) : group_(std::move(group)) {}

    /// "unamed_" and the first number, from `index` on, that the group has no such set for.
    /// Requires that the names given before were used, and for lower indices.
    [[nodiscard]] std::string next(std::int32_t index);

  private:
    strata::data_group group_;
    std::int32_t number_ = 0; // the lowest that may be free
};

/// Throws std::bad_alloc unless memory for `channels` more channels of `elements` elements each can
/// be had.
void require_memory_for_channels(double channels, double elements);

/// Number of sets of all `groups`.
[[nodiscard]] std::int32_t channel_count(const std::vector<strata::data_group>& groups);

} // namespace mox
