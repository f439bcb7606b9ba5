#include "plugins/c3d/samples/decoder.hpp"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "plugins/c3d/samples/lanes_portable.hpp"
#include "tests/cpp/c3d/support/bytes.hpp"

namespace {

using c3d::decoder;
using c3d::number_format;
using c3d::residual_rule;
using c3d::sample_storage;
using c3d::word_sign;
using c3d_test::append;
using c3d_test::byte_vector;

constexpr float no_value = std::numeric_limits<float>::quiet_NaN();

/// One point, decoded: x, y, z and residual of each frame.
struct decoded_point {
    std::vector<float> coordinates;
    std::vector<float> residuals;
    bool found = false;
};

decoded_point decode(const decoder& kernels, const byte_vector& bytes, std::size_t frames,
                     residual_rule rule = residual_rule::decides) {
    decoded_point result{std::vector<float>(3 * frames), std::vector<float>(frames), false};
    const c3d::point_target target{result.coordinates.data(), result.residuals.data()};
    const c3d::point_block block{bytes.data(), bytes.size() / frames, frames, 0, frames};
    result.found = kernels.points(block, std::span(&target, 1), rule);
    return result;
}

struct kind {
    number_format format;
    sample_storage storage;
};

byte_vector number(const kind& kind, float value) {
    return kind.storage == sample_storage::real
               ? c3d_test::real(kind.format, value)
               : c3d_test::word(kind.format, static_cast<int>(value));
}

std::size_t number_bytes(const kind& kind) { return kind.storage == sample_storage::real ? 4 : 2; }

class DecodeKernels : public testing::TestWithParam<kind> {
  protected:
    [[nodiscard]] std::vector<decoder> both() const {
        const auto [format, storage] = GetParam();
        return {c3d::decoder_for(format, storage, word_sign::with),
                c3d::decoder_of<c3d::portable_lanes>(format, storage, word_sign::with)};
    }
};

TEST_P(DecodeKernels, PointsAreTransposedWhateverTheNumberOfFrames) {
    for (const auto& kernels : both()) {
        for (int frames = 1; frames <= 9; ++frames) {
            byte_vector bytes;
            for (int f = 0; f < frames; ++f) {
                for (int c = 0; c < 4; ++c) {
                    append(bytes, number(GetParam(), static_cast<float>(100 * (c + 1) + f)));
                }
            }
            const auto count = static_cast<std::size_t>(frames);
            const auto found = decode(kernels, bytes, count);
            EXPECT_TRUE(found.found);
            for (int f = 0; f < frames; ++f) {
                const auto frame = static_cast<std::size_t>(f);
                EXPECT_EQ(found.coordinates[frame], 100.0F + static_cast<float>(f));
                EXPECT_EQ(found.coordinates[count + frame], 200.0F + static_cast<float>(f));
                EXPECT_EQ(found.coordinates[2 * count + frame], 300.0F + static_cast<float>(f));
                EXPECT_EQ(found.residuals[frame], 400.0F + static_cast<float>(f));
            }
        }
    }
}

TEST_P(DecodeKernels, PointsWithoutATargetArePassedOver) {
    for (const auto& kernels : both()) {
        byte_vector bytes;
        for (float value : {1.0F, 2.0F, 3.0F, 0.0F, 4.0F, 5.0F, 6.0F, 0.0F})
            append(bytes, number(GetParam(), value));
        std::vector<float> coordinates(3);
        std::vector<float> residuals(1);
        std::vector<c3d::point_target> targets(2);
        const c3d::point_block block{bytes.data(), bytes.size(), 1, 0, 1};
        EXPECT_FALSE(kernels.points(block, targets, residual_rule::decides));
        targets[1] = {coordinates.data(), residuals.data()};
        EXPECT_TRUE(kernels.points(block, targets, residual_rule::decides));
        EXPECT_EQ(coordinates, (std::vector{4.0F, 5.0F, 6.0F}));
    }
}

TEST_P(DecodeKernels, NegativeFourthWordMakesASampleInvalid) {
    for (const auto& kernels : both()) {
        byte_vector bytes;
        for (float value : {1.0F, 2.0F, 3.0F, -1.0F})
            append(bytes, number(GetParam(), value));
        const auto found = decode(kernels, bytes, 1);
        EXPECT_FALSE(found.found);
        for (float value : found.coordinates)
            EXPECT_TRUE(std::isnan(value));
        EXPECT_EQ(found.residuals[0], -1.0F);
    }
}

TEST_P(DecodeKernels, IgnoredFourthWordsLeaveCoordinatesAndNoResidual) {
    for (const auto& kernels : both()) {
        byte_vector bytes;
        for (float value : {0.0F, 2.0F, 0.0F, -1.0F})
            append(bytes, number(GetParam(), value));
        const auto found = decode(kernels, bytes, 1, residual_rule::ignored);
        EXPECT_TRUE(found.found);
        EXPECT_EQ(found.coordinates[1], 2.0F);
        EXPECT_EQ(found.residuals[0], 0.0F);
    }
}

TEST_P(DecodeKernels, IgnoredFourthWordsDoNotMakeZerosCoordinates) {
    for (const auto& kernels : both()) {
        byte_vector bytes;
        for (float value : {0.0F, 0.0F, 0.0F, -1.0F})
            append(bytes, number(GetParam(), value));
        EXPECT_FALSE(decode(kernels, bytes, 1, residual_rule::ignored).found);
    }
}

TEST_P(DecodeKernels, IgnoredFourthWordsStillTellWhatWasNotSeen) {
    for (const auto& kernels : both()) {
        byte_vector bytes;
        for (float value : {0.0F, 0.0F, 0.0F, -1.0F, 0.0F, 0.0F, 0.0F, 7.0F, 0.0F, 1.0F, 0.0F,
                            -1.0F, 5.0F, 6.0F, 7.0F, -300.0F}) {
            append(bytes, number(GetParam(), value));
        }
        const auto found = decode(kernels, bytes, 4, residual_rule::ignored);
        EXPECT_TRUE(found.found);
        EXPECT_TRUE(std::isnan(found.coordinates[0]));
        EXPECT_TRUE(std::isnan(found.coordinates[4]));
        EXPECT_EQ(found.coordinates[1], 0.0F);
        EXPECT_EQ(found.coordinates[6], 1.0F);
        EXPECT_EQ(found.coordinates[11], 7.0F);
        EXPECT_EQ(found.residuals, (std::vector<float>{-1.0F, 0.0F, 0.0F, 0.0F}));
    }
}

TEST_P(DecodeKernels, ColumnsAreTransposedWhateverTheirNumber) {
    for (const auto& kernels : both()) {
        for (std::size_t columns = 1; columns <= 9; ++columns) {
            for (std::size_t rows : {1U, 3U, 4U, 6U, 131U}) {
                byte_vector bytes;
                for (std::size_t i = 0; i < rows * columns; ++i) {
                    append(bytes, number(GetParam(), static_cast<float>(i)));
                }
                std::vector<const std::byte*> begins(rows);
                for (std::size_t i = 0; i < rows; ++i) {
                    begins[i] = bytes.data() + i * columns * number_bytes(GetParam());
                }
                std::vector<float> values(columns * rows, no_value);
                std::vector<float*> targets(columns);
                for (std::size_t i = 0; i < columns; ++i)
                    targets[i] = values.data() + i * rows;
                kernels.columns({begins, 0}, targets);
                for (std::size_t i = 0; i < rows * columns; ++i) {
                    EXPECT_EQ(values[i % columns * rows + i / columns], static_cast<float>(i));
                }
            }
        }
    }
}

TEST_P(DecodeKernels, BothSetsOfLanesGiveTheSameBits) {
    std::mt19937 random(7);
    constexpr std::size_t frames = 4096;
    byte_vector bytes(frames * 4 * number_bytes(GetParam()));
    for (auto& byte : bytes)
        byte = static_cast<std::byte>(random());
    const auto kernels = both();
    for (const auto rule : {residual_rule::decides, residual_rule::ignored}) {
        const auto first = decode(kernels[0], bytes, frames, rule);
        const auto second = decode(kernels[1], bytes, frames, rule);
        for (std::size_t i = 0; i < first.coordinates.size(); ++i) {
            const bool both_nan =
                std::isnan(first.coordinates[i]) && std::isnan(second.coordinates[i]);
            ASSERT_TRUE(both_nan || first.coordinates[i] == second.coordinates[i]) << i;
        }
        EXPECT_EQ(first.residuals, second.residuals);
    }
}

INSTANTIATE_TEST_SUITE_P(Kinds, DecodeKernels,
                         testing::Values(kind{number_format::intel, sample_storage::real},
                                         kind{number_format::dec, sample_storage::real},
                                         kind{number_format::mips, sample_storage::real},
                                         kind{number_format::intel, sample_storage::integer},
                                         kind{number_format::dec, sample_storage::integer},
                                         kind{number_format::mips, sample_storage::integer}));

/// The fourth word of a real sample, as four bytes of an Intel file, and whether it is valid.
struct residual_case {
    const char* bytes;
    bool valid;
};

class RealResiduals : public testing::TestWithParam<residual_case> {};

TEST_P(RealResiduals, DecideOnTheSample) {
    for (const auto& kernels :
         {c3d::decoder_for(number_format::intel, sample_storage::real, word_sign::with),
          c3d::decoder_of<c3d::portable_lanes>(number_format::intel, sample_storage::real,
                                               word_sign::with)}) {
        auto bytes = c3d_test::hex("00 00 80 3F 00 00 80 3F 00 00 80 3F");
        append(bytes, c3d_test::hex(GetParam().bytes));
        const auto found = decode(kernels, bytes, 1);
        EXPECT_EQ(found.found, GetParam().valid);
        EXPECT_EQ(std::isnan(found.coordinates[0]), !GetParam().valid);
        const auto stored = c3d::read_real(number_format::intel, bytes.data() + 12);
        EXPECT_EQ(found.residuals[0], GetParam().valid ? stored : -1.0F);
    }
}

INSTANTIATE_TEST_SUITE_P(Words, RealResiduals,
                         testing::Values(residual_case{"00 40 41 44", true},    // 773
                                         residual_case{"00 FE FF 46", true},    // 32767
                                         residual_case{"00 00 00 47", false},   // 32768
                                         residual_case{"00 FF 7F 47", false},   // 65535
                                         residual_case{"3D 0A 57 3F", true},    // 0.84
                                         residual_case{"03 00 05 00", true},    // two words
                                         residual_case{"00 00 80 BF", false},   // -1
                                         residual_case{"00 00 00 BF", false},   // -0.5
                                         residual_case{"00 00 00 80", true},    // -0
                                         residual_case{"00 00 C0 7F", false},   // NaN
                                         residual_case{"00 00 80 7F", false})); // infinity

TEST(RealCoordinates, InfinityAndNaNMakeASampleInvalid) {
    const auto kernels =
        c3d::decoder_for(number_format::intel, sample_storage::real, word_sign::with);
    for (const auto* bad : {"00 00 80 7F", "00 00 80 FF", "00 00 C0 7F"}) {
        for (std::size_t at = 0; at < 3; ++at) {
            byte_vector bytes(16);
            const auto four = c3d_test::hex(bad);
            std::copy(four.begin(), four.end(), bytes.begin() + static_cast<int>(4 * at));
            const auto found = decode(kernels, bytes, 1);
            EXPECT_FALSE(found.found);
            EXPECT_TRUE(std::isnan(found.coordinates[2]));
        }
    }
}

TEST(RealCoordinates, LargestNumbersAreValid) {
    const auto kernels =
        c3d::decoder_for(number_format::intel, sample_storage::real, word_sign::with);
    const auto bytes = c3d_test::hex("FF FF 7F 7F FF FF 7F 7F FF FF 7F 7F 00 00 00 00");
    EXPECT_TRUE(decode(kernels, bytes, 1).found);
}

TEST(UnsignedWords, HaveNoSignInAnalogColumnsOnly) {
    for (auto format : {number_format::intel, number_format::mips}) {
        const auto kernels = c3d::decoder_for(format, sample_storage::integer, word_sign::without);
        const auto bytes = c3d_test::word(format, 0x9000);
        const std::byte* row = bytes.data();
        float value = 0;
        float* target = &value;
        kernels.columns({std::span(&row, 1), 0}, std::span(&target, 1));
        EXPECT_EQ(value, 36864.0F);
        byte_vector point;
        for (int number : {-5, 1, 1, -1})
            append(point, c3d_test::word(format, number));
        EXPECT_FALSE(decode(kernels, point, 1).found);
    }
}

} // namespace
