#pragma once

#include <cstdint>

#include <strata/data_set.hpp>

namespace mox {

/// Samples that follow each other.
struct sample_range {
    std::uint64_t first; ///< from 0
    std::uint64_t count;
};

/// A set like `set`, of three dimensions with the samples in the last, that belongs to no group and
/// has the samples in `kept` alone; they are held as compactly as they were. Its attributes are
/// those of `set`; that called `reliabilities`, one float32 a sample, is cut alike where there is
/// one. Requires that the set has those samples.
[[nodiscard]] strata::data_set cut_of(const strata::data_set& set, sample_range kept,
                                      const char* reliabilities);

} // namespace mox
