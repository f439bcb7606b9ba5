#pragma once

// Adding and removing channels of any kind.

#include "store/python.hpp"

#include <string>

#include <strata/data_set.hpp>
#include <strata/data_store.hpp>

namespace mox::channels {

/// Adds a channel with the samples of `matrix`: a row a sample and a column a component.
///
/// Its unit is that of the kind's first channel that has one, else what the kind has where nothing
/// names one. Labels may repeat. ValueError for an empty label and for all points together,
/// RuntimeError for a matrix of another form.
[[nodiscard]] strata::data_set append(strata::data_store acquisition, const std::string& kind,
                                      const std::string& label, PyObject* matrix);

/// Removes a channel; those behind it move up. KeyError when it is no part of the acquisition.
void remove(strata::data_store acquisition, strata::data_set channel);

/// Replaces the samples of all channels of a kind: a row a sample, and for each channel, in the
/// order of its keys, a column a component. RuntimeError for any other matrix.
void set_all_values(strata::data_store acquisition, const std::string& kind, PyObject* matrix);

/// The samples of all channels of a kind, a row a sample, as set_all_values takes them; an array
/// without dimensions when there is no channel.
[[nodiscard]] py_ref all_values(strata::data_store acquisition, const std::string& kind);

} // namespace mox::channels
