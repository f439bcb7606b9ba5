#pragma once

// The encoding loops, written once over lanes as the decoding loops are: tiles of 4 instants × 4
// columns, transposed on their way from channels to records.

#include <algorithm>
#include <cstring>

#include "plugins/c3d/samples/encoder.hpp"

namespace c3d {

/// Up to four samples of each column, from `first` on.
template <typename Lanes>
typename Lanes::tile load_column_tile(const std::array<const float*, 4>& columns, std::size_t first,
                                      std::size_t count) noexcept {
    if (count == 4) {
        return {Lanes::load(columns[0] + first), Lanes::load(columns[1] + first),
                Lanes::load(columns[2] + first), Lanes::load(columns[3] + first)};
    }
    std::array<std::array<float, 4>, 4> copies{};
    for (std::size_t column = 0; column < 4; ++column)
        std::copy_n(columns[column] + first, count, copies[column].begin());
    return {Lanes::load(copies[0].data()), Lanes::load(copies[1].data()),
            Lanes::load(copies[2].data()), Lanes::load(copies[3].data())};
}

template <typename Lanes>
void encode_points(const point_run& run, std::byte* to, std::size_t frame_bytes) {
    const auto zero = Lanes::all(0.0F);
    const auto invalid = Lanes::all(-1.0F);
    const auto [x, y, z] = run.coordinates;
    for (std::size_t frame = 0; frame < run.frames; frame += 4) {
        const auto count = std::min<std::size_t>(4, run.frames - frame);
        auto tile = load_column_tile<Lanes>({x, y, z, run.words}, frame, count);
        const auto valid = Lanes::finite(tile.first, tile.second, tile.third);
        const auto is_word = Lanes::in_range(tile.fourth, 0.0F, 32768.0F);
        tile.first = Lanes::select(valid, tile.first, zero);
        tile.second = Lanes::select(valid, tile.second, zero);
        tile.third = Lanes::select(valid, tile.third, zero);
        tile.fourth = Lanes::select(valid, Lanes::select(is_word, tile.fourth, zero), invalid);
        Lanes::transpose(tile);
        const std::array records = {tile.first, tile.second, tile.third, tile.fourth};
        for (std::size_t i = 0; i < count; ++i)
            Lanes::store_bytes(to + (frame + i) * frame_bytes, records[i]);
    }
}

template <typename Lanes>
void encode_four_columns(const std::array<const float*, 4>& columns,
                         std::span<std::byte* const> rows, std::size_t offset) {
    for (std::size_t row = 0; row < rows.size(); row += 4) {
        const auto count = std::min<std::size_t>(4, rows.size() - row);
        auto tile = load_column_tile<Lanes>(columns, row, count);
        Lanes::transpose(tile);
        const std::array values = {tile.first, tile.second, tile.third, tile.fourth};
        for (std::size_t i = 0; i < count; ++i)
            Lanes::store_bytes(rows[row + i] + offset, values[i]);
    }
}

template <typename Lanes>
void encode_columns(const column_run& run, std::span<std::byte* const> rows, std::size_t offset) {
    if (run.count == 4)
        return encode_four_columns<Lanes>(run.columns, rows, offset);
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (std::size_t column = 0; column < run.count; ++column)
            Lanes::store_real(rows[row] + offset + 4 * column, run.columns[column][row]);
    }
}

template <typename Lanes> encoder encoder_of() noexcept {
    return {&encode_points<Lanes>, &encode_columns<Lanes>};
}

} // namespace c3d
