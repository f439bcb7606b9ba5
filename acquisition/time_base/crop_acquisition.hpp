#pragma once

#include <strata/data_store.hpp>

namespace mox::sampling {

/// Keeps `frames` frames from the index `first` on, counted from 0, and drops the others: of
/// points, with what is known of each sample, of analog channels the samples that belong to those
/// frames, and of rotations. What is kept is kept bit for bit and as compact as it was. The instant
/// of the first frame and the events stay what they are: whoever calls moves them. ValueError (an
/// error of that code) unless all channels have those frames, std::bad_alloc when memory is short;
/// nothing has changed then.
void crop(strata::data_store acquisition, int first, int frames);

} // namespace mox::sampling
