#include "plugins/c3d/analogs/analog_offsets.hpp"

#include <vector>

#include <gtest/gtest.h>

namespace {

using c3d::analog_encoding;
using c3d::read_offset;
using c3d::sample_storage;
using c3d::word_sign;

constexpr analog_encoding real_data{sample_storage::real, std::nullopt, true};
constexpr analog_encoding integer_data{sample_storage::integer, std::nullopt, true};

analog_encoding declared(analog_encoding encoding, word_sign sign) {
    encoding.declared = sign;
    return encoding;
}

std::vector<float> samples_around(float level) { return {level - 20, level, level + 20}; }

TEST(AnalogOffsets, OrdinaryWordIsTheOffset) {
    EXPECT_EQ(read_offset(2048, real_data, samples_around(0)).offset, 2048.0);
    EXPECT_EQ(read_offset(2048, integer_data, {}).offset, 2048.0);
}

TEST(AnalogOffsets, SmallNegativeOffsetStaysNegative) {
    for (auto sign : {word_sign::with, word_sign::without}) {
        EXPECT_EQ(read_offset(-5, declared(real_data, sign), samples_around(100)).offset, -5.0);
        EXPECT_EQ(read_offset(-5, declared(integer_data, sign), samples_around(100)).offset, -5.0);
    }
    EXPECT_EQ(read_offset(-5, real_data, samples_around(-3)).offset, -5.0);
    EXPECT_EQ(read_offset(-5, integer_data, samples_around(-3)).offset, -5.0);
}

TEST(AnalogOffsets, UnsignedFormatMakesTheWordUnsigned) {
    for (auto storage : {real_data, integer_data}) {
        const auto encoding = declared(storage, word_sign::without);
        EXPECT_EQ(read_offset(-32750, encoding, samples_around(0)).offset, 32786.0);
        EXPECT_EQ(read_offset(-32750, encoding, samples_around(32768)).offset, 32786.0);
        EXPECT_EQ(read_offset(-1, encoding, samples_around(65000)).offset, 65535.0);
    }
}

TEST(AnalogOffsets, SamplesAroundTheMiddleMakeTheWordUnsignedWithoutAFormat) {
    EXPECT_EQ(read_offset(-32768, real_data, samples_around(32768)).offset, 32768.0);
    EXPECT_EQ(read_offset(-32700, real_data, samples_around(32800)).offset, 32836.0);
}

TEST(AnalogOffsets, SamplesOutdoASignedFormat) {
    const auto encoding = declared(real_data, word_sign::with);
    EXPECT_EQ(read_offset(-32768, encoding, samples_around(32768)).offset, 32768.0);
    EXPECT_EQ(read_offset(-32768, encoding, samples_around(-32768)).offset, -32768.0);
}

TEST(AnalogOffsets, IntegersAroundTheMiddleHaveNoSignEither) {
    const auto found = read_offset(-32768, integer_data, samples_around(-100));
    EXPECT_EQ(found.offset, 32768.0);
    EXPECT_TRUE(found.unsigned_samples);
}

TEST(AnalogOffsets, SignedIntegersStaySigned) {
    const auto found = read_offset(-32768, declared(integer_data, word_sign::with), {});
    EXPECT_EQ(found.offset, -32768.0);
    EXPECT_FALSE(found.unsigned_samples);
}

TEST(AnalogOffsets, ConverterOfTwelveBitsHasNoMiddleThere) {
    auto encoding = integer_data;
    encoding.may_have_16_bits = false;
    EXPECT_EQ(read_offset(-32768, encoding, {}).offset, -32768.0);
}

} // namespace
