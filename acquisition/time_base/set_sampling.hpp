#pragma once

// Changes of the time base. Everything is checked first: a refused call changes nothing.

#include <strata/data_store.hpp>

namespace mox::sampling {

/// Sets rates everywhere: `rate` for points, `rate` × ratio for analogs. Samples are not resampled;
/// the frame count of the raw points of a file changes with the rate. Reading may have left no
/// group of analog channels, which is no reason to refuse. RuntimeError for a rate that is
/// negative, infinite or NaN.
void set_frequency(strata::data_store acquisition, double rate);

/// Gives every point channel `frames` frames and every analog channel `frames` × ratio samples.
/// RuntimeError for a negative number; std::bad_alloc when memory is short.
void set_frame_number(strata::data_store acquisition, int frames);
/// The ratio is set first, as set_analog_samples_per_frame does.
void set_frame_number(strata::data_store acquisition, int frames, int ratio);

/// Makes `first` the first frame by moving the start time. With `shift_events` other than 0 the
/// events move along. RuntimeError for a negative frame, and for any but 0 when the rate is 0.
void set_first_frame(strata::data_store acquisition, int first);
void set_first_frame(strata::data_store acquisition, int first, int shift_events);

/// Sets the analog samples of a frame, and with them the samples of the analog channels to come:
/// point_frame_number × ratio. RuntimeError for a ratio below 1, or when there are analog channels.
void set_analog_samples_per_frame(strata::data_store acquisition, int ratio);

/// Another time base in one step, whatever channels there are: `rate` for points with `ratio`
/// analog samples in each of `frames` frames. Channels are cut or lengthened as set_frame_number
/// does it; giving them the samples of the new instants is left to the caller. RuntimeError for a
/// rate, ratio or number that the single setters refuse; std::bad_alloc when memory is short.
void set_time_base(strata::data_store acquisition, double rate, int ratio, int frames);

/// RuntimeError unless `bits` is 8, 12, 14 or 16. A script may have made the metadata entry a list
/// or a text: then it stays what it is, and the store's log says so.
void set_analog_resolution(strata::data_store acquisition, int bits);

void set_interpolation_gap(strata::data_store acquisition, int gap);

/// RuntimeError "Ratio cannot be lower than 1" when it is.
void require_ratio(int ratio);

} // namespace mox::sampling
