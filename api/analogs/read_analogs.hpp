// Functions of analog channels.
//
// | file                  |                                               |
// |-----------------------|-----------------------------------------------|
// | read_analogs          | what they are                                 |
// | gain_table            | what a gain code stands for                   |
// | modify_analogs        | new samples, new channels, fewer channels     |
// | set_analog_attributes | label, description, unit, gain, offset, scale |

#pragma once

#include "store/python.hpp"

#include <string>

#include <strata/data_store.hpp>

#include "store/outputs.hpp"

namespace mox::analogs {

/// The device group of the analog channels; RuntimeError when it is missing.
[[nodiscard]] strata::data_group analog_group(const strata::data_store& acquisition);

/// All analog channels: {set name: array of samples}, and their information ("units", "label",
/// "offset", "scale", "description", "gain", "frequency").
[[nodiscard]] outputs<2> all(strata::data_store acquisition);

/// One channel: array of samples, and its information. RuntimeError when there is no such channel.
[[nodiscard]] outputs<2> by_index(strata::data_store acquisition, int index);
[[nodiscard]] outputs<2> by_label(strata::data_store acquisition, const std::string& label);

/// All channels as one float64 matrix, a column a channel, in ascending index; without channels an
/// array without dimensions.
[[nodiscard]] py_ref values(strata::data_store acquisition);

/// Number of analog channels.
[[nodiscard]] double number(strata::data_store acquisition);

} // namespace mox::analogs
