#pragma once

// Changes of analog channels. Every check comes before the first change: a refused call leaves the
// acquisition as it was.

#include "store/python.hpp"

#include <string>

#include <strata/data_store.hpp>

#include "store/outputs.hpp"

namespace mox::analogs {

/// A new channel with the values of `matrix`, samples × 1.
[[nodiscard]] outputs<2> append(strata::data_store acquisition, const std::string& label,
                                PyObject* matrix);
[[nodiscard]] outputs<2> append_described(strata::data_store acquisition, const std::string& label,
                                          PyObject* matrix, const std::string& description);

/// Deletes a channel; every greater index moves down.
[[nodiscard]] outputs<2> remove_by_index(strata::data_store acquisition, int index);
[[nodiscard]] outputs<2> remove_by_label(strata::data_store acquisition, const std::string& label);

/// Deletes every channel.
void clear(strata::data_store acquisition);

/// Adds channels until there are `wanted`; with fewer wanted than there are, shrink_channels
/// decides what stays.
void set_number(strata::data_store acquisition, int wanted);

/// Values of all channels, a column each in ascending index, and of one channel.
void set_all_values(strata::data_store acquisition, PyObject* matrix);
void set_values_by_index(strata::data_store acquisition, int index, PyObject* matrix);
void set_values_by_label(strata::data_store acquisition, std::string& label, PyObject* matrix);

} // namespace mox::analogs
