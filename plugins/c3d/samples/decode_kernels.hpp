#pragma once

// The decoding loops, written once over "lanes": vectors of four floats as the processor offers
// them. Samples are taken in tiles of 4 rows (frames, or instants) × 4 columns (x y z and the
// fourth word, or channels): a file holds rows one behind the other, a channel holds a column, so
// every tile is transposed on its way.

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>

#include "plugins/c3d/samples/decoder.hpp"

namespace c3d {

inline constexpr std::size_t tile_edge = 4;
using tile_rows = std::array<const std::byte*, tile_edge>;

template <typename Lanes, number_format Format> struct real_elements {
    static constexpr std::size_t element_bytes = 4;
    static typename Lanes::tile load(const tile_rows& rows) noexcept {
        return Lanes::template load_reals<Format>(rows);
    }
};

template <typename Lanes, number_format Format, word_sign Sign> struct word_elements {
    static constexpr std::size_t element_bytes = 2;
    static typename Lanes::tile load(const tile_rows& rows) noexcept {
        return Lanes::template load_words<Format, Sign>(rows);
    }
};

template <typename Lanes>
void store_lanes(float* target, typename Lanes::vector values, std::size_t count) noexcept {
    if (count == tile_edge) {
        Lanes::store(target, values);
        return;
    }
    std::array<float, tile_edge> all;
    Lanes::store(all.data(), values);
    std::copy_n(all.begin(), count, target);
}

/// Samples without a position: −1 beside zeros is how a point that was not seen is stored, also by
/// writers whose fourth words mean nothing else.
template <typename Lanes>
typename Lanes::mask lanes_without_position(typename Lanes::mask nonzero,
                                            typename Lanes::vector words) noexcept {
    const auto negative = Lanes::in_range(words, -std::numeric_limits<float>::infinity(), 0.0F);
    const auto without_sign = Lanes::in_range(words, 32768.0F, 65536.0F);
    return Lanes::except(Lanes::either(negative, without_sign), nonzero);
}

template <typename Lanes, typename Elements, residual_rule Rule>
bool decode_point(const point_block& block, const std::byte* sample, const point_target& target) {
    const auto not_seen = Lanes::all(std::numeric_limits<float>::quiet_NaN());
    const auto no_residual = Lanes::all(-1.0F);
    auto* const x = target.coordinates + block.first_frame;
    auto* const y = x + block.total_frames;
    auto* const z = y + block.total_frames;
    auto* const residuals = target.residuals + block.first_frame;
    auto found = Lanes::no_lane();
    for (std::size_t frame = 0; frame < block.frames; frame += tile_edge) {
        const auto count = std::min(tile_edge, block.frames - frame);
        tile_rows rows;
        for (std::size_t row = 0; row < tile_edge; ++row) {
            rows[row] = sample + (frame + std::min(row, count - 1)) * block.frame_bytes;
        }
        const auto [xs, ys, zs, words] = Elements::load(rows);
        auto valid = Lanes::finite(xs, ys, zs);
        if constexpr (Rule == residual_rule::decides) {
            valid = Lanes::both(valid, Lanes::in_range(words, 0.0F, 32768.0F));
            found = Lanes::either(found, valid);
        } else {
            const auto nonzero = Lanes::any_nonzero(xs, ys, zs);
            found = Lanes::either(found, Lanes::both(valid, nonzero));
            valid = Lanes::except(valid, lanes_without_position<Lanes>(nonzero, words));
        }
        store_lanes<Lanes>(x + frame, Lanes::select(valid, xs, not_seen), count);
        store_lanes<Lanes>(y + frame, Lanes::select(valid, ys, not_seen), count);
        store_lanes<Lanes>(z + frame, Lanes::select(valid, zs, not_seen), count);
        const auto kept = Rule == residual_rule::decides ? words : Lanes::all(0.0F);
        store_lanes<Lanes>(residuals + frame, Lanes::select(valid, kept, no_residual), count);
    }
    return Lanes::is_any(found);
}

template <typename Lanes, typename Elements>
bool decode_points(const point_block& block, std::span<const point_target> targets,
                   residual_rule rule) {
    if (block.frames == 0)
        return false;
    bool found = false;
    for (std::size_t i = 0; i < targets.size(); ++i) {
        const auto& target = targets[i];
        if (!target.coordinates)
            continue;
        const auto* sample = block.points + i * 4 * Elements::element_bytes;
        const bool any =
            rule == residual_rule::decides
                ? decode_point<Lanes, Elements, residual_rule::decides>(block, sample, target)
                : decode_point<Lanes, Elements, residual_rule::ignored>(block, sample, target);
        found = found || any;
    }
    return found;
}

/// One tile of columns, from the rows on. With fewer than four columns the rows are copied, so that
/// nothing behind them is read.
template <typename Elements>
auto load_columns(const column_block& block, std::size_t row, std::size_t count, std::size_t column,
                  std::size_t columns) {
    tile_rows rows;
    for (std::size_t i = 0; i < tile_edge; ++i) {
        rows[i] = block.rows[row + std::min(i, count - 1)] + column * Elements::element_bytes;
    }
    if (columns == tile_edge)
        return Elements::load(rows);
    std::array<std::array<std::byte, tile_edge * Elements::element_bytes>, tile_edge> copies{};
    for (std::size_t i = 0; i < tile_edge; ++i) {
        std::memcpy(copies[i].data(), rows[i], columns * Elements::element_bytes);
        rows[i] = copies[i].data();
    }
    return Elements::load(rows);
}

/// Rows whose cache lines stay in the first-level cache from one tile of columns to the next, which
/// reads the same lines.
inline constexpr std::size_t cached_rows = 128;

template <typename Lanes, typename Elements>
void decode_columns(const column_block& block, std::span<float* const> targets) {
    const auto columns = std::min(tile_edge, targets.size());
    for (std::size_t first = 0; first < block.rows.size(); first += cached_rows) {
        const auto end = std::min(first + cached_rows, block.rows.size());
        for (std::size_t next = 0; next < targets.size(); next += tile_edge) {
            // The last tile reaches back over columns that are done, rather than beyond the row.
            const auto column = std::min(next, targets.size() - columns);
            for (std::size_t row = first; row < end; row += tile_edge) {
                const auto count = std::min(tile_edge, end - row);
                const auto tile = load_columns<Elements>(block, row, count, column, columns);
                const std::array values = {tile.first, tile.second, tile.third, tile.fourth};
                for (std::size_t i = 0; i < columns; ++i) {
                    store_lanes<Lanes>(targets[column + i] + block.first_row + row, values[i],
                                       count);
                }
            }
        }
    }
}

template <typename Lanes, number_format Format>
decoder decoder_of_format(sample_storage storage, word_sign sign) noexcept {
    using reals = real_elements<Lanes, Format>;
    using signed_words = word_elements<Lanes, Format, word_sign::with>;
    using unsigned_words = word_elements<Lanes, Format, word_sign::without>;
    if (storage == sample_storage::real) {
        return {&decode_points<Lanes, reals>, &decode_columns<Lanes, reals>};
    }
    // The fourth word of a point has a sign whatever the analog samples have.
    return {&decode_points<Lanes, signed_words>, sign == word_sign::with
                                                     ? &decode_columns<Lanes, signed_words>
                                                     : &decode_columns<Lanes, unsigned_words>};
}

template <typename Lanes>
decoder decoder_of(number_format format, sample_storage storage, word_sign sign) noexcept {
    switch (format) {
    case number_format::dec:
        return decoder_of_format<Lanes, number_format::dec>(storage, sign);
    case number_format::mips:
        return decoder_of_format<Lanes, number_format::mips>(storage, sign);
    case number_format::intel:
        break;
    }
    return decoder_of_format<Lanes, number_format::intel>(storage, sign);
}

} // namespace c3d
