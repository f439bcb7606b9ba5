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

/// RuntimeError of throw_channel_exists when `group` has a set, or a group, of the name that a
/// channel with this label would get.
void require_new_channel(const strata::data_group& group, const std::string& label);

/// Name of a channel that has no label.
[[nodiscard]] std::string unnamed_channel(std::int32_t index);

/// Creates a channel of the group's `NumSamples` samples, all zero, with the group's rate and start
/// time. "/" and "\" in `label` become "_" in the set's name; an empty label becomes that of an
/// unnamed channel. RuntimeError of require_new_channel.
strata::data_set create_channel(strata::data_group group, const std::string& label,
                                std::int32_t index, const std::string& description);

/// Creates a marker channel: create_channel in `group` and `MetricType` "marker".
strata::data_set create_marker(strata::data_group group, const std::string& label,
                               std::int32_t index);

/// Creates an analog channel: create_channel, then `Gain`, `Offset`, `Scale` and `MetricType` with
/// their initial values.
strata::data_set create_analog_channel(strata::data_group group, const std::string& label,
                                       std::int32_t index, const std::string& description);

/// Creates analog channels "unamed_<index>" for the indices from `first` up to, and without,
/// `last`.
void add_analog_channels(strata::data_group group, std::int32_t first, std::int32_t last);

} // namespace mox
