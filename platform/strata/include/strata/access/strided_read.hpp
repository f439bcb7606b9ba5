#pragma once

#include <cstddef>
#include <cstdint>

#include <strata/data_set.hpp>
#include <strata/export.hpp>

namespace strata {

/// Writes `samples` values of one component of one channel, from `first_sample` on, as doubles to `destination`,
/// `stride_elements` doubles apart, so that matrices are filled without a copy in between.
///
/// `set` holds numbers and has the dimensions components, channels and samples, or samples alone (one component, one channel).
/// False, and nothing written, for any other set and for samples that it does not have.
[[nodiscard]] STRATA_EXPORT bool read_strided(const data_set& set, std::uint64_t channel, std::uint64_t component,
                                              std::uint64_t first_sample, std::uint64_t samples, double* destination,
                                              std::ptrdiff_t stride_elements) noexcept;

/// As read_strided for all components of a channel at once: component c of sample i goes to
/// destination[i * stride_elements + c]. One pass over the destination instead of one for each component.
[[nodiscard]] STRATA_EXPORT bool read_interleaved(const data_set& set, std::uint64_t channel, std::uint64_t first_sample,
                                                  std::uint64_t samples, double* destination,
                                                  std::ptrdiff_t stride_elements) noexcept;

} // namespace strata
