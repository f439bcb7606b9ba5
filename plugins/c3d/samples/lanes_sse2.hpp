#pragma once

#include <emmintrin.h>

#include <limits>

#include "plugins/c3d/samples/decode_kernels.hpp"

namespace c3d {

/// Lanes of every x86-64 processor.
struct sse2_lanes {
    using vector = __m128;
    using mask = __m128;
    struct tile {
        vector first, second, third, fourth;
    };

    template <number_format Format> static tile load_reals(const tile_rows& rows) noexcept {
        tile result{reals<Format>(rows[0]), reals<Format>(rows[1]), reals<Format>(rows[2]),
                    reals<Format>(rows[3])};
        _MM_TRANSPOSE4_PS(result.first, result.second, result.third, result.fourth);
        return result;
    }

    template <number_format Format, word_sign Sign>
    static tile load_words(const tile_rows& rows) noexcept {
        const auto rows_01 = _mm_unpacklo_epi16(words<Format>(rows[0]), words<Format>(rows[1]));
        const auto rows_23 = _mm_unpacklo_epi16(words<Format>(rows[2]), words<Format>(rows[3]));
        const auto columns_01 = _mm_unpacklo_epi32(rows_01, rows_23);
        const auto columns_23 = _mm_unpackhi_epi32(rows_01, rows_23);
        return {low_words<Sign>(columns_01), high_words<Sign>(columns_01),
                low_words<Sign>(columns_23), high_words<Sign>(columns_23)};
    }

    static vector all(float value) noexcept { return _mm_set1_ps(value); }
    static mask no_lane() noexcept { return _mm_setzero_ps(); }

    static mask finite(vector a, vector b, vector c) noexcept {
        // Zero times a finite number is zero; times infinity or NaN it is NaN, which no sum takes
        // away.
        const auto zero = _mm_setzero_ps();
        const auto sum =
            _mm_add_ps(_mm_add_ps(_mm_mul_ps(a, zero), _mm_mul_ps(b, zero)), _mm_mul_ps(c, zero));
        return _mm_cmpeq_ps(sum, zero);
    }
    static mask any_nonzero(vector a, vector b, vector c) noexcept {
        const auto zero = _mm_setzero_ps();
        return _mm_or_ps(_mm_or_ps(_mm_cmpneq_ps(a, zero), _mm_cmpneq_ps(b, zero)),
                         _mm_cmpneq_ps(c, zero));
    }
    /// lowest <= value < end; false for NaN.
    static mask in_range(vector values, float lowest, float end) noexcept {
        return _mm_and_ps(_mm_cmpge_ps(values, _mm_set1_ps(lowest)),
                          _mm_cmplt_ps(values, _mm_set1_ps(end)));
    }
    static mask both(mask a, mask b) noexcept { return _mm_and_ps(a, b); }
    static mask either(mask a, mask b) noexcept { return _mm_or_ps(a, b); }
    /// `a` without `b`.
    static mask except(mask a, mask b) noexcept { return _mm_andnot_ps(b, a); }
    static bool is_any(mask lanes) noexcept { return _mm_movemask_ps(lanes) != 0; }

    static vector select(mask chosen, vector yes, vector no) noexcept {
        return _mm_or_ps(_mm_and_ps(chosen, yes), _mm_andnot_ps(chosen, no));
    }

    static vector load(const float* source) noexcept { return _mm_loadu_ps(source); }
    static void store(float* target, vector values) noexcept { _mm_storeu_ps(target, values); }

    static void transpose(tile& values) noexcept {
        _MM_TRANSPOSE4_PS(values.first, values.second, values.third, values.fourth);
    }
    // Addresses need no alignment.
    template <number_format Format>
    static void store_reals(std::byte* target, vector values) noexcept {
        auto bits = _mm_castps_si128(values);
        if constexpr (Format == number_format::dec)
            bits = words_swapped(vax_bits(values));
        if constexpr (Format == number_format::mips)
            bits = words_swapped(bytes_swapped(bits));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(target), bits);
    }
    template <number_format Format>
    static void store_words(std::byte* target, vector values) noexcept {
        // Packing saturates numbers with a sign: that of the lower half keeps words without one.
        const auto lower = _mm_srai_epi32(_mm_slli_epi32(_mm_cvtps_epi32(values), 16), 16);
        const auto words = _mm_packs_epi32(lower, lower);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(target),
                         Format == number_format::mips ? bytes_swapped(words) : words);
    }

  private:
    /// Bytes of each 16-bit word exchanged.
    static __m128i bytes_swapped(__m128i value) noexcept {
        return _mm_or_si128(_mm_slli_epi16(value, 8), _mm_srli_epi16(value, 8));
    }

    /// Words of each 32-bit lane exchanged.
    static __m128i words_swapped(__m128i value) noexcept {
        constexpr int pairwise = _MM_SHUFFLE(2, 3, 0, 1);
        return _mm_shufflehi_epi16(_mm_shufflelo_epi16(value, pairwise), pairwise);
    }

    static constexpr int all_exponent_bits = 0x7F800000;
    static constexpr int exponent_two = 0x01000000;
    static constexpr int largest_vax_exponent = 0x7E800000; // 253: two more are 255

    /// decode_vax_bits for four numbers.
    static vector vax_reals(__m128i bits) noexcept {
        const auto exponents = _mm_and_si128(bits, _mm_set1_epi32(all_exponent_bits));
        const auto is_zero = _mm_cmpeq_epi32(exponents, _mm_setzero_si128());
        const auto is_usual = _mm_cmpgt_epi32(exponents, _mm_set1_epi32(exponent_two));
        const auto usual = _mm_castsi128_ps(_mm_sub_epi32(bits, _mm_set1_epi32(exponent_two)));
        const auto tiny = _mm_mul_ps(_mm_castsi128_ps(bits), _mm_set1_ps(0.25F));
        const auto reserved = _mm_and_ps(_mm_castsi128_ps(_mm_srai_epi32(bits, 31)),
                                         _mm_set1_ps(std::numeric_limits<float>::quiet_NaN()));
        const auto rare = select(_mm_castsi128_ps(is_zero), reserved, tiny);
        return select(_mm_castsi128_ps(is_usual), usual, rare);
    }

    /// encode_vax_bits for four numbers.
    static __m128i vax_bits(vector values) noexcept {
        const auto all_bits = _mm_set1_epi32(all_exponent_bits);
        const auto bits = _mm_castps_si128(values);
        const auto exponents = _mm_and_si128(bits, all_bits);
        const auto is_denormal = _mm_cmpeq_epi32(exponents, _mm_setzero_si128());
        const auto is_too_large = _mm_cmpgt_epi32(exponents, _mm_set1_epi32(largest_vax_exponent));
        const auto larger = _mm_castps_si128(_mm_mul_ps(values, _mm_set1_ps(4.0F)));
        const auto is_nothing =
            _mm_cmpeq_epi32(_mm_and_si128(larger, all_bits), _mm_setzero_si128());
        const auto tiny = _mm_andnot_si128(is_nothing, larger);
        const auto usual = _mm_add_epi32(bits, _mm_set1_epi32(exponent_two));
        const auto held =
            _mm_or_si128(_mm_and_si128(is_denormal, tiny), _mm_andnot_si128(is_denormal, usual));
        const auto reserved = _mm_slli_epi32(is_too_large, 31);
        return _mm_or_si128(reserved, _mm_andnot_si128(is_too_large, held));
    }

    template <number_format Format> static vector reals(const std::byte* row) noexcept {
        const auto raw = _mm_loadu_si128(reinterpret_cast<const __m128i*>(row));
        if constexpr (Format == number_format::dec)
            return vax_reals(words_swapped(raw));
        if constexpr (Format == number_format::mips) {
            return _mm_castsi128_ps(words_swapped(bytes_swapped(raw)));
        }
        return _mm_castsi128_ps(raw);
    }

    template <number_format Format> static __m128i words(const std::byte* row) noexcept {
        const auto raw = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(row));
        return Format == number_format::mips ? bytes_swapped(raw) : raw;
    }

    // A word beside a copy of itself, shifted down, is that word widened with its sign; beside
    // zero, without.
    template <word_sign Sign> static vector low_words(__m128i value) noexcept {
        const auto widened = Sign == word_sign::with
                                 ? _mm_srai_epi32(_mm_unpacklo_epi16(value, value), 16)
                                 : _mm_unpacklo_epi16(value, _mm_setzero_si128());
        return _mm_cvtepi32_ps(widened);
    }
    template <word_sign Sign> static vector high_words(__m128i value) noexcept {
        const auto widened = Sign == word_sign::with
                                 ? _mm_srai_epi32(_mm_unpackhi_epi16(value, value), 16)
                                 : _mm_unpackhi_epi16(value, _mm_setzero_si128());
        return _mm_cvtepi32_ps(widened);
    }
};

} // namespace c3d
