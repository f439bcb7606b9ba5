// Channels and their groups.
//
// | file            |                                         |
// |-----------------|-----------------------------------------|
// | channels        | device groups, and channels for them    |
// | find_point_kind | the kind of points of a word or a group |

#pragma once

// Device groups and the channel sets in them, as every acquisition has them.

#include <cstdint>
#include <string>
#include <vector>

#include <strata/data_group.hpp>
#include <strata/data_set.hpp>

namespace mox {

/// Creates the device group `name` below `parent`: no samples, rate 0, start time 0.
strata::data_group create_device_group(strata::data_group parent, const std::string& name,
                                       const std::string& device_type);

/// Components of a sample in a device group: 3 where its `DeviceType` is "Mocap", 1 otherwise.
[[nodiscard]] std::uint64_t components_of(const strata::data_group& group);

/// `NumSamples` of a device group; 0 when it lacks it.
[[nodiscard]] std::uint64_t samples_of(const strata::data_group& group);

/// The five point groups in the order of their types; RuntimeError that names the path when one is
/// missing.
[[nodiscard]] std::vector<strata::data_group> point_groups(const strata::data_group& root);

/// "You are trying to add a channel that already exists : '<name>' already exists at given
/// location": RuntimeError.
[[noreturn]] void throw_channel_exists(const std::string& name);

/// RuntimeError of require_new_channel when `group` has a set, or a group, of the name that a
/// channel with this label would get.
void require_new_channel(const strata::data_group& group, const std::string& label);

// A channel is made apart and added to its group when it is complete: when memory runs out
// meanwhile, the group has no part of it.

/// A channel for `group`, of its `NumSamples` samples, all zero, with its rate and start time. "/"
/// and "\" in `label` become "_" in the set's name; an empty label becomes that of an unnamed
/// channel. RuntimeError of require_new_channel when the group has a set of that name.
[[nodiscard]] strata::data_set make_channel(const strata::data_group& group,
                                            const std::string& label, std::int32_t index,
                                            const std::string& description);

/// An analog channel: make_channel, then `Gain`, `Offset`, `Scale` and `MetricType` with their
/// initial values.
[[nodiscard]] strata::data_set make_analog_channel(const strata::data_group& group,
                                                   const std::string& label, std::int32_t index,
                                                   const std::string& description);

/// Adds a channel to the group that it was made for. RuntimeError of require_new_channel when the
/// group has a set of that name.
void add_channel(strata::data_group group, const strata::data_set& channel);

/// Adds a marker channel: make_channel and `MetricType` "marker".
void create_marker(const strata::data_group& group, const std::string& label, std::int32_t index);

/// Adds analog channels "unamed_<index>" for the indices from `first` up to, and without, `last`.
void add_analog_channels(const strata::data_group& group, std::int32_t first, std::int32_t last);

} // namespace mox
