#pragma once

#include "store/python.hpp"

#include <cstdint>
#include <vector>

#include <strata/data_set.hpp>

namespace mox {

/// The sets in ascending `RelativeSetIndex`. RuntimeError that names the set when one has no index.
[[nodiscard]] std::vector<strata::data_set> in_index_order(std::vector<strata::data_set> sets);

/// A channel and where its values begin in a matrix.
struct channel_columns {
    strata::data_set set;
    std::uint64_t first_column;
};

/// Writes `matrix` (from checked_matrix: a row a sample) into the channels, which have as many
/// samples as the matrix has rows. What the samples' residuals were is forgotten.
void write_channels(const std::vector<channel_columns>& channels, const py_ref& matrix);

/// The same for channels of `components` components whose columns follow one another.
void write_channels_in_order(const std::vector<strata::data_set>& sets, const py_ref& matrix,
                             std::uint64_t components);

} // namespace mox
