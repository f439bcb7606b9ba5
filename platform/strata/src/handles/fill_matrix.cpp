#include <strata/access/fill_matrix.hpp>

#include <algorithm>
#include <limits>
#include <vector>

#include "platform/strata/src/elements/spread_row.hpp"
#include "platform/strata/src/handles/channel_place.hpp"

namespace strata {

namespace {

struct placed_columns {
    detail::channel_place place;
    std::uint64_t first;
};

void fill_rows(const std::vector<placed_columns>& columns, std::uint64_t first_sample,
               std::uint64_t samples, std::uint64_t width, double* rows) noexcept {
    for (const auto& [place, first] : columns) {
        for (std::uint64_t component = 0; component < place.components; ++component) {
            detail::spread_row(*place.row, place.first + component * place.step + first_sample,
                               samples, rows + first + component,
                               static_cast<std::ptrdiff_t>(width));
        }
    }
}

/// Rows that fit into the processor's caches together with what they are filled from.
std::uint64_t rows_of_a_tile(std::uint64_t width) noexcept {
    constexpr std::uint64_t doubles_of_a_tile = 8192;
    return std::clamp<std::uint64_t>(doubles_of_a_tile / std::max<std::uint64_t>(width, 1), 8, 256);
}

} // namespace

bool fill_matrix(std::span<const matrix_columns> columns, std::uint64_t samples,
                 std::uint64_t width, double* matrix) {
    std::vector<placed_columns> placed;
    placed.reserve(columns.size());
    for (const auto& [set, channel, first] : columns) {
        const auto place = detail::find_channel(set, channel);
        if (!place.row || place.samples < samples)
            return false;
        if (first > width || place.components > width - first)
            return false;
        placed.push_back({place, first});
    }

    // A channel's values lie far apart in the matrix, which is slow to write to in memory. They are
    // put in order in a tile that stays in the cache, and tiles are copied as a whole.
    const auto tile_rows = std::min(rows_of_a_tile(width), samples);
    std::vector<double> tile(tile_rows * width, std::numeric_limits<double>::quiet_NaN());
    for (std::uint64_t row = 0; row < samples; row += tile_rows) {
        const auto rows = std::min(tile_rows, samples - row);
        fill_rows(placed, row, rows, width, tile.data());
        std::copy_n(tile.data(), rows * width, matrix + row * width);
    }
    return true;
}

} // namespace strata
