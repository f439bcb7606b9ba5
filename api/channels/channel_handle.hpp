#pragma once

// Channels by their handles, which follow a channel through every change of its name and kind.
// Every function raises KeyError when the channel is no part of the acquisition, be it that it was
// removed.

#include "store/python.hpp"

#include <string>

#include <strata/data_group.hpp>
#include <strata/data_set.hpp>
#include <strata/data_store.hpp>

namespace mox::channels {

/// The device group that holds a channel.
[[nodiscard]] strata::data_group holder_of(const strata::data_store& acquisition,
                                           const strata::data_set& channel);

/// "Markers", "Angles", "Forces", "Moments", "Powers" or "Analogs".
[[nodiscard]] std::string kind(strata::data_store acquisition, strata::data_set channel);

/// The index of a channel as the functions count it, from 0: analog channels one by one, points of
/// all kinds in one sequence.
[[nodiscard]] py_ref index(strata::data_store acquisition, strata::data_set channel);

/// The text `name` of a channel, "Label", "Unit" or "Description"; empty when it has none.
/// ValueError for any other name.
[[nodiscard]] std::string text(strata::data_store acquisition, strata::data_set channel,
                               const std::string& name);
void set_text(strata::data_store acquisition, strata::data_set channel, const std::string& name,
              const std::string& text);

/// Samples a second.
[[nodiscard]] double rate(strata::data_store acquisition, strata::data_set channel);

/// Shape of the samples: (frames, 3) of a point, (samples,) of an analog channel.
[[nodiscard]] py_ref shape(strata::data_store acquisition, strata::data_set channel);

/// The samples as an array that is not writable: (frames, 3) of a point, (samples,) of an analog
/// channel.
[[nodiscard]] py_ref values(strata::data_store acquisition, strata::data_set channel);

/// Replaces the samples by those of a matrix with a row a sample and a column a component; what the
/// samples' residuals were is forgotten. RuntimeError for any other matrix.
void set_values(strata::data_store acquisition, strata::data_set channel, PyObject* matrix);

/// Multiplies the scale of an analog channel, so that samples which were multiplied too are stored
/// as the same integers. ValueError for a point.
void multiply_scale(strata::data_store acquisition, strata::data_set channel, double factor);

/// Gives a channel the unit, description, residuals and, of analog channels, the scale, offset and
/// gain of another one, which may be part of another acquisition. Residuals need as many samples.
void carry(strata::data_store acquisition, strata::data_set channel, strata::data_store source,
           strata::data_set original);

} // namespace mox::channels
