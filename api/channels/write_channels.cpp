#include "store/python.hpp"

#include "api/channels/write_channels.hpp"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

#include "schema/names.hpp"
#include "store/matrix_writer.hpp"
#include "store/swig_error.hpp"
#include "store/typed_access.hpp"

namespace mox {

namespace attribute = schema::attribute;

namespace {

/// Rows taken from the matrix for all channels before the next ones: as many as stay in the cache.
constexpr std::uint64_t bytes_per_block = std::uint64_t{256} * 1024;

} // namespace

std::vector<strata::data_set> in_index_order(std::vector<strata::data_set> sets) {
    std::vector<std::pair<std::int32_t, strata::data_set>> indexed;
    indexed.reserve(sets.size());
    for (auto& set : sets) {
        const auto index = set.retrieve_attribute(attribute::relative_set_index);
        if (!index)
            throw_runtime_error(fmt::format("The channel '{}' has no index", set.name()));
        indexed.emplace_back(read<std::int32_t>(index), std::move(set));
    }
    std::ranges::stable_sort(indexed, {}, &std::pair<std::int32_t, strata::data_set>::first);
    for (std::size_t i = 0; i < indexed.size(); ++i)
        sets[i] = std::move(indexed[i].second);
    return sets;
}

void write_channels(const std::vector<channel_columns>& channels, const py_ref& matrix) {
    const auto rows = static_cast<std::uint64_t>(PyArray_DIM(matrix.array(), 0));
    const auto width = static_cast<std::uint64_t>(PyArray_DIM(matrix.array(), 1));
    const auto step = std::max<std::uint64_t>(
        1, bytes_per_block / (sizeof(double) * std::max<std::uint64_t>(1, width)));
    for (std::uint64_t row = 0; row < rows; row += step) {
        for (const auto& [set, first_column] : channels)
            write_matrix_rows(set, matrix.array(), first_column, {row, std::min(step, rows - row)});
    }
    for (auto [set, first_column] : channels) {
        if (set.exists_attribute(attribute::residuals))
            set.delete_attribute(attribute::residuals);
    }
}

void write_channels_in_order(const std::vector<strata::data_set>& sets, const py_ref& matrix,
                             std::uint64_t components) {
    std::vector<channel_columns> channels;
    channels.reserve(sets.size());
    for (const auto& set : sets)
        channels.push_back({set, channels.size() * components});
    write_channels(channels, matrix);
}

} // namespace mox
