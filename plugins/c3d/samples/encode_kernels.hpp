#pragma once

// The encoding loops, written once over lanes as the decoding loops are: tiles of 4 instants × 4
// columns, transposed on their way from channels to records.

#include <algorithm>
#include <cstring>

#include "plugins/c3d/samples/encoder.hpp"

namespace c3d {

template <typename Lanes, number_format Format> struct real_records {
    static constexpr std::size_t element_bytes = 4;
    static constexpr float words_end = 32768.0F;
    static void store(std::byte* to, typename Lanes::vector values) noexcept {
        Lanes::template store_reals<Format>(to, values);
    }
    static void store_one(std::byte* to, float value) noexcept { write_real(Format, to, value); }
};

template <typename Lanes, number_format Format> struct word_records {
    static constexpr std::size_t element_bytes = 2;
    static constexpr float words_end = 32767.5F; // the next one would be rounded to −32,768
    static void store(std::byte* to, typename Lanes::vector values) noexcept {
        Lanes::template store_words<Format>(to, values);
    }
    static void store_one(std::byte* to, float value) noexcept {
        write_word(Format, to, nearest_word(value));
    }
};

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

template <typename Lanes, typename Records>
void encode_points(const point_run& run, std::byte* to, std::size_t frame_bytes) {
    const auto zero = Lanes::all(0.0F);
    const auto invalid = Lanes::all(-1.0F);
    const auto [x, y, z] = run.coordinates;
    for (std::size_t frame = 0; frame < run.frames; frame += 4) {
        const auto count = std::min<std::size_t>(4, run.frames - frame);
        auto tile = load_column_tile<Lanes>({x, y, z, run.words}, frame, count);
        const auto valid = Lanes::finite(tile.first, tile.second, tile.third);
        const auto is_word = Lanes::in_range(tile.fourth, 0.0F, Records::words_end);
        tile.first = Lanes::select(valid, tile.first, zero);
        tile.second = Lanes::select(valid, tile.second, zero);
        tile.third = Lanes::select(valid, tile.third, zero);
        tile.fourth = Lanes::select(valid, Lanes::select(is_word, tile.fourth, zero), invalid);
        Lanes::transpose(tile);
        const std::array records = {tile.first, tile.second, tile.third, tile.fourth};
        for (std::size_t i = 0; i < count; ++i)
            Records::store(to + (frame + i) * frame_bytes, records[i]);
    }
}

template <typename Lanes, typename Records>
void encode_four_columns(const std::array<const float*, 4>& columns,
                         std::span<std::byte* const> rows, std::size_t offset) {
    for (std::size_t row = 0; row < rows.size(); row += 4) {
        const auto count = std::min<std::size_t>(4, rows.size() - row);
        auto tile = load_column_tile<Lanes>(columns, row, count);
        Lanes::transpose(tile);
        const std::array values = {tile.first, tile.second, tile.third, tile.fourth};
        for (std::size_t i = 0; i < count; ++i)
            Records::store(rows[row + i] + offset, values[i]);
    }
}

template <typename Lanes, typename Records>
void encode_columns(const column_run& run, std::span<std::byte* const> rows, std::size_t offset) {
    if (run.count == 4)
        return encode_four_columns<Lanes, Records>(run.columns, rows, offset);
    for (std::size_t row = 0; row < rows.size(); ++row) {
        for (std::size_t column = 0; column < run.count; ++column) {
            Records::store_one(rows[row] + offset + column * Records::element_bytes,
                               run.columns[column][row]);
        }
    }
}

template <typename Lanes, number_format Format>
encoder encoder_of_format(sample_storage storage) noexcept {
    using reals = real_records<Lanes, Format>;
    using words = word_records<Lanes, Format>;
    if (storage == sample_storage::real)
        return {&encode_points<Lanes, reals>, &encode_columns<Lanes, reals>};
    return {&encode_points<Lanes, words>, &encode_columns<Lanes, words>};
}

template <typename Lanes>
encoder encoder_of(number_format format, sample_storage storage) noexcept {
    switch (format) {
    case number_format::dec:
        return encoder_of_format<Lanes, number_format::dec>(storage);
    case number_format::mips:
        return encoder_of_format<Lanes, number_format::mips>(storage);
    case number_format::intel:
        break;
    }
    return encoder_of_format<Lanes, number_format::intel>(storage);
}

} // namespace c3d
