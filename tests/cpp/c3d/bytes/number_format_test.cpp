#include "plugins/c3d/bytes/number_format.hpp"

#include <cmath>

#include <gtest/gtest.h>

#include "tests/cpp/c3d/support/bytes.hpp"

namespace {

using c3d::number_format;
using c3d_test::hex;

TEST(NumberFormat, ProcessorBytesAreKnown) {
    EXPECT_EQ(c3d::format_of_processor_byte(84), number_format::intel);
    EXPECT_EQ(c3d::format_of_processor_byte(85), number_format::dec);
    EXPECT_EQ(c3d::format_of_processor_byte(86), number_format::mips);
}

TEST(NumberFormat, ProcessorBytesWithout83AreKnown) {
    EXPECT_EQ(c3d::format_of_processor_byte(1), number_format::intel);
    EXPECT_EQ(c3d::format_of_processor_byte(2), number_format::dec);
    EXPECT_EQ(c3d::format_of_processor_byte(3), number_format::mips);
}

TEST(NumberFormat, OtherProcessorBytesAreNone) {
    for (int byte : {0, 4, 83, 87, 255}) {
        EXPECT_FALSE(c3d::format_of_processor_byte(static_cast<std::uint8_t>(byte)));
    }
}

TEST(NumberFormat, WordsFollowTheByteOrder) {
    const auto bytes = hex("34 92");
    EXPECT_EQ(c3d::read_unsigned_word(number_format::intel, bytes.data()), 0x9234);
    EXPECT_EQ(c3d::read_unsigned_word(number_format::dec, bytes.data()), 0x9234);
    EXPECT_EQ(c3d::read_unsigned_word(number_format::mips, bytes.data()), 0x3492);
    EXPECT_EQ(c3d::read_signed_word(number_format::intel, bytes.data()), 0x9234 - 0x10000);
}

TEST(NumberFormat, RealsFollowTheProcessor) {
    EXPECT_EQ(c3d::read_real(number_format::intel, hex("00 00 70 42").data()), 60.0F);
    EXPECT_EQ(c3d::read_real(number_format::mips, hex("42 70 00 00").data()), 60.0F);
    EXPECT_EQ(c3d::read_real(number_format::dec, hex("70 43 00 00").data()), 60.0F);
}

TEST(NumberFormat, NaNOfAFileStaysNaN) {
    EXPECT_TRUE(std::isnan(c3d::read_real(number_format::intel, hex("00 00 C0 7F").data())));
    EXPECT_TRUE(std::isnan(c3d::read_real(number_format::mips, hex("7F C0 00 00").data())));
}

} // namespace
