#pragma once

#include <cstddef>
#include <cstdint>

#include <strata/data_set.hpp>
#include <strata/export.hpp>

namespace strata {

/// Writes `samples` values of one component of one channel, from `first_sample` on, as doubles to
/// `destination`, `stride_elements` doubles apart. Takes no memory. For matrices of many channels
/// see fill_matrix, which is several times faster.
///
/// `set` holds numbers and has the dimensions components, channels and samples, or samples alone
/// (one component, one channel). False, and nothing written, for any other set and for samples that
/// it does not have.
[[nodiscard]] STRATA_EXPORT bool read_strided(const data_set& set, std::uint64_t channel,
                                              std::uint64_t component, std::uint64_t first_sample,
                                              std::uint64_t samples, double* destination,
                                              std::ptrdiff_t stride_elements) noexcept;

} // namespace strata
