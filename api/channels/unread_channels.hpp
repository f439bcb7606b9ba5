#pragma once

#include "store/python.hpp"

#include <strata/data_store.hpp>

namespace mox::channels {

/// The channels of the file that were not read because nobody asked for them: a dictionary from
/// kind ("Markers", "Angles", "Forces", "Moments", "Powers", "Analogs", "Rotations") to
/// dictionaries from key, as they would have it, to unit. Empty where the whole file was read.
[[nodiscard]] py_ref unread(strata::data_store acquisition);

/// Makes the acquisition one that lacks what `source` lacks, too, but for its rotations.
void carry_unread(strata::data_store acquisition, strata::data_store source);

} // namespace mox::channels
