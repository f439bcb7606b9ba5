#include "plugins/c3d/bytes/vax_float.hpp"

#include <cmath>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "tests/cpp/c3d/support/bytes.hpp"

namespace {

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

} // namespace
