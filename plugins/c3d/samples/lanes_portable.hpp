#pragma once

#include <array>
#include <cmath>
#include <cstddef>

#include "plugins/c3d/bytes/number_format.hpp"
#include "plugins/c3d/samples/decode_kernels.hpp"

namespace c3d {

/// Lanes for any processor.
struct portable_lanes {
    using vector = std::array<float, 4>;
    using mask = std::array<bool, 4>;
    struct tile {
        vector first, second, third, fourth;
    };

    template <number_format Format> static tile load_reals(const tile_rows& rows) noexcept {
        return transposed(rows, 4, [](const std::byte* at) { return read_real(Format, at); });
    }

    template <number_format Format, word_sign Sign>
    static tile load_words(const tile_rows& rows) noexcept {
        return transposed(rows, 2, [](const std::byte* at) {
            if constexpr (Sign == word_sign::with) {
                return static_cast<float>(read_signed_word(Format, at));
            } else {
                return static_cast<float>(read_unsigned_word(Format, at));
            }
        });
    }

    static vector all(float value) noexcept { return {value, value, value, value}; }
    static mask no_lane() noexcept { return {}; }

    static mask finite(const vector& a, const vector& b, const vector& c) noexcept {
        return each([&](std::size_t i) {
            return std::isfinite(a[i]) && std::isfinite(b[i]) && std::isfinite(c[i]);
        });
    }
    static mask any_nonzero(const vector& a, const vector& b, const vector& c) noexcept {
        return each([&](std::size_t i) { return a[i] != 0.0F || b[i] != 0.0F || c[i] != 0.0F; });
    }
    /// lowest <= value < end; false for NaN.
    static mask in_range(const vector& values, float lowest, float end) noexcept {
        return each([&](std::size_t i) { return values[i] >= lowest && values[i] < end; });
    }
    static mask both(const mask& a, const mask& b) noexcept {
        return each([&](std::size_t i) { return a[i] && b[i]; });
    }
    static mask either(const mask& a, const mask& b) noexcept {
        return each([&](std::size_t i) { return a[i] || b[i]; });
    }
    /// `a` without `b`.
    static mask except(const mask& a, const mask& b) noexcept {
        return each([&](std::size_t i) { return a[i] && !b[i]; });
    }
    static bool is_any(const mask& lanes) noexcept {
        return lanes[0] || lanes[1] || lanes[2] || lanes[3];
    }

    static vector select(const mask& chosen, const vector& yes, const vector& no) noexcept {
        vector result;
        for (std::size_t i = 0; i < 4; ++i)
            result[i] = chosen[i] ? yes[i] : no[i];
        return result;
    }

    static vector load(const float* source) noexcept {
        return {source[0], source[1], source[2], source[3]};
    }
    static void store(float* target, const vector& values) noexcept {
        for (std::size_t i = 0; i < 4; ++i)
            target[i] = values[i];
    }

    static void transpose(tile& values) noexcept {
        const std::array rows = {values.first, values.second, values.third, values.fourth};
        const auto column = [&](std::size_t i) {
            return vector{rows[0][i], rows[1][i], rows[2][i], rows[3][i]};
        };
        values = {column(0), column(1), column(2), column(3)};
    }
    template <number_format Format>
    static void store_reals(std::byte* target, const vector& values) noexcept {
        for (std::size_t i = 0; i < 4; ++i)
            write_real(Format, target + 4 * i, values[i]);
    }
    template <number_format Format>
    static void store_words(std::byte* target, const vector& values) noexcept {
        for (std::size_t i = 0; i < 4; ++i)
            write_word(Format, target + 2 * i, nearest_word(values[i]));
    }

  private:
    template <typename Function> static mask each(Function function) noexcept {
        return {function(0), function(1), function(2), function(3)};
    }

    template <typename Read>
    static tile transposed(const tile_rows& rows, std::size_t element_bytes, Read read) noexcept {
        const auto column = [&](std::size_t index) {
            vector values;
            for (std::size_t i = 0; i < 4; ++i)
                values[i] = read(rows[i] + index * element_bytes);
            return values;
        };
        return {column(0), column(1), column(2), column(3)};
    }
};

} // namespace c3d
