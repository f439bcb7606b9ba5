// What an acquisition is, made of the data store. From the ground up:
//
// | file            |                                                            |
// |-----------------|------------------------------------------------------------|
// | channels/       | channels and their groups                                  |
// | time_base/      | rates, frames and samples                                  |
// | platforms/      | force platforms, kept in line with parameters and channels |
// | files/          | reading and writing                                        |
// | new_acquisition | an acquisition without a file                              |

#pragma once

#include <cstdint>

#include <strata/data_store.hpp>

namespace mox::lifecycle {

/// An acquisition with the whole layout and no data.
[[nodiscard]] strata::data_store empty_acquisition();

/// A new acquisition of `points` markers with `frames` frames and `analogs` analog channels with
/// `ratio` samples per frame, all zero. RuntimeError for a negative count or a ratio below 1,
/// std::bad_alloc when memory is short.
[[nodiscard]] strata::data_store new_acquisition();
[[nodiscard]] strata::data_store new_acquisition(int points);
[[nodiscard]] strata::data_store new_acquisition(int points, int frames);
[[nodiscard]] strata::data_store new_acquisition(int points, int frames, int analogs);
[[nodiscard]] strata::data_store new_acquisition(int points, int frames, int analogs, int ratio);

/// An acquisition of its own with all that `acquisition` has; samples are shared until either of
/// both changes them. Throws std::bad_alloc.
[[nodiscard]] strata::data_store copy(strata::data_store acquisition);

/// Closing and deleting check the handle and leave the acquisition as it is: it lives until its
/// last handle goes.
void close_acquisition(strata::data_store acquisition);
void delete_acquisition(strata::data_store acquisition);

} // namespace mox::lifecycle
