#include "plugins/c3d/bytes/vax_float.hpp"

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "plugins/c3d/bytes/number_format.hpp"
#include "tests/cpp/c3d/support/bytes.hpp"

namespace {

using c3d_test::byte_vector;
using c3d_test::hex;

float decode(std::string_view bytes) {
    const auto four = hex(bytes);
    return c3d::decode_vax_float(std::span<const std::byte, 4>(four.data(), 4));
}

struct vax_case {
    const char* bytes;
    float value;
};

class VaxFloatTable : public testing::TestWithParam<vax_case> {};

TEST_P(VaxFloatTable, DecodesExactly) { EXPECT_EQ(decode(GetParam().bytes), GetParam().value); }

INSTANTIATE_TEST_SUITE_P(
    Numbers, VaxFloatTable,
    testing::Values(vax_case{"80 40 00 00", 1.0F}, vax_case{"80 C0 00 00", -1.0F},
                    vax_case{"70 43 00 00", 60.0F}, vax_case{"C8 43 00 00", 100.0F},
                    vax_case{"CC 3E CD CC", 0.1F}, vax_case{"AA BE AB AA", -0.083333336F},
                    vax_case{"49 41 DB 0F", 3.14159274F}));

TEST(VaxFloat, ExponentZeroIsZeroWhateverTheFraction) {
    EXPECT_EQ(decode("00 00 00 00"), 0.0F);
    EXPECT_EQ(decode("7F 00 FF FF"), 0.0F);
    EXPECT_FALSE(std::signbit(decode("7F 00 FF FF")));
}

TEST(VaxFloat, ReservedOperandIsNaN) {
    EXPECT_TRUE(std::isnan(decode("00 80 00 00")));
    EXPECT_TRUE(std::isnan(decode("7F 80 FF FF")));
}

TEST(VaxFloat, LargestExponentIsANumber) {
    // Exponent 255, fraction 0: 0.5 × 2^127.
    EXPECT_EQ(decode("80 7F 00 00"), std::ldexp(1.0F, 126));
    EXPECT_EQ(decode("FF 7F FF FF"), std::ldexp(16777215.0F, 103));
}

TEST(VaxFloat, SmallestExponentsAreDenormals) {
    EXPECT_EQ(decode("80 00 00 00"), std::ldexp(1.0F, -128)); // exponent 1
    EXPECT_EQ(decode("00 01 00 00"), std::ldexp(1.0F, -127)); // exponent 2
    EXPECT_EQ(decode("80 01 00 00"), std::ldexp(1.0F, -126)); // exponent 3: the first normal one
    EXPECT_EQ(decode("80 80 00 00"), -std::ldexp(1.0F, -128));
}

TEST_P(VaxFloatTable, IsWrittenAsItIsRead) {
    byte_vector bytes(4);
    c3d::write_real(c3d::number_format::dec, bytes.data(), GetParam().value);
    EXPECT_EQ(bytes, hex(GetParam().bytes));
}

TEST(VaxFloat, EveryNumberThatItHoldsIsWrittenExactly) {
    for (std::uint32_t exponent = 1; exponent < 256; ++exponent) {
        for (std::uint32_t fraction : {0U, 0x400000U, 0x7FFFFCU}) {
            const auto bits = exponent << 23U | fraction;
            EXPECT_EQ(c3d::encode_vax_bits(c3d::decode_vax_bits(bits)), bits);
            const auto negative = bits | 1U << 31U;
            EXPECT_EQ(c3d::encode_vax_bits(c3d::decode_vax_bits(negative)), negative);
        }
    }
}

TEST(VaxFloat, WhatItCannotHoldIsZeroOrTheReservedOperand) {
    EXPECT_EQ(c3d::encode_vax_bits(0.0F), 0U);
    EXPECT_EQ(c3d::encode_vax_bits(-0.0F), 0U);
    EXPECT_EQ(c3d::encode_vax_bits(std::ldexp(1.0F, -129)), 0U);
    for (float value : {std::ldexp(1.0F, 127), std::numeric_limits<float>::infinity(),
                        std::numeric_limits<float>::quiet_NaN()}) {
        EXPECT_EQ(c3d::encode_vax_bits(value), 1U << 31U);
    }
    EXPECT_FALSE(c3d::holds_real(c3d::number_format::dec, std::ldexp(-1.0F, 127)));
    EXPECT_TRUE(c3d::holds_real(c3d::number_format::dec, 1.5e38F));
    EXPECT_TRUE(c3d::holds_real(c3d::number_format::intel, 3e38F));
}

} // namespace
