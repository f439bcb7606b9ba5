#pragma once

#include <cstdint>
#include <span>

#include <strata/data_set.hpp>
#include <strata/export.hpp>

namespace strata {

/// Columns of a matrix, side by side, that one channel gives: a column for each of its components.
struct matrix_columns {
    data_set set;              ///< as read_strided takes it
    std::uint64_t channel = 0; ///< index of the channel in the set
    std::uint64_t first = 0;   ///< the matrix's column that takes the first component
};

/// Fills a matrix of `samples` rows and `width` columns, doubles in row-major order, with the first
/// samples of channels. Columns that no channel gives are NaN; of several that give the same
/// column, the last one counts.
///
/// False, and nothing written, when one of `columns` is no channel of a set that read_strided
/// takes, has fewer samples, or leaves the matrix. Throws std::bad_alloc; nothing is written then
/// either.
[[nodiscard]] STRATA_EXPORT bool fill_matrix(std::span<const matrix_columns> columns,
                                             std::uint64_t samples, std::uint64_t width,
                                             double* matrix);

} // namespace strata
