#include "plugins/c3d/parameters/header.hpp"

#include <algorithm>

#include <gtest/gtest.h>

#include "tests/cpp/c3d/support/bytes.hpp"

namespace {

using c3d::header_block;
using c3d::number_format;
using c3d_test::byte_vector;
using c3d_test::characters;
using c3d_test::hex;
using c3d_test::real;
using c3d_test::word;

void put(header_block& block, std::size_t offset, const byte_vector& bytes) {
    std::copy(bytes.begin(), bytes.end(), block.begin() + static_cast<std::ptrdiff_t>(offset));
}

header_block block_with_events(int key, int count) {
    header_block block{};
    put(block, 298, word(number_format::intel, key));
    put(block, 300, word(number_format::intel, count));
    return block;
}

TEST(Header, WordsAreDecodedInTheFormatOfTheFile) {
    for (auto format : {number_format::intel, number_format::dec, number_format::mips}) {
        header_block block{};
        put(block, 2, word(format, 26));
        put(block, 4, word(format, 64));
        put(block, 6, word(format, 33));
        put(block, 8, word(format, 65535));
        put(block, 10, word(format, 10));
        put(block, 12, real(format, -0.1F));
        put(block, 16, word(format, 40000));
        put(block, 18, word(format, 4));
        put(block, 20, real(format, 50.0F));
        const auto head = c3d::decode_header(format, block);
        EXPECT_EQ(head.points, 26);
        EXPECT_EQ(head.analog_values, 64);
        EXPECT_EQ(head.first_frame, 33);
        EXPECT_EQ(head.last_frame, 65535);
        EXPECT_EQ(head.interpolation_gap, 10);
        EXPECT_EQ(head.scale, -0.1F);
        EXPECT_EQ(head.data_start, 40000);
        EXPECT_EQ(head.samples_per_frame, 4);
        EXPECT_EQ(head.rate, 50.0F);
        EXPECT_TRUE(head.events.empty());
    }
}

TEST(Header, EventsHaveTimeStatusAndLabel) {
    auto block = block_with_events(12345, 2);
    put(block, 304, real(number_format::intel, 0.5F));
    put(block, 308, real(number_format::intel, 1.25F));
    put(block, 376, hex("01 00"));
    put(block, 396, characters("RHS LTO1"));
    const auto events = c3d::decode_header(number_format::intel, block).events;
    ASSERT_EQ(events.size(), 2U);
    EXPECT_EQ(events[0].time, 0.5F);
    EXPECT_EQ(events[0].status, 1);
    EXPECT_EQ(events[0].label, "RHS");
    EXPECT_EQ(events[1].time, 1.25F);
    EXPECT_EQ(events[1].status, 0);
    EXPECT_EQ(events[1].label, "LTO1");
}

TEST(Header, MoreEventsThanThereIsRoomForAreEighteen) {
    const auto block = block_with_events(12345, 400);
    EXPECT_EQ(c3d::decode_header(number_format::intel, block).events.size(), 18U);
}

TEST(Header, WithoutTheKeyACountThatCannotBeIsNone) {
    const auto block = block_with_events(7, 400);
    EXPECT_TRUE(c3d::decode_header(number_format::intel, block).events.empty());
}

TEST(Header, WithoutTheKeyLabelsHaveTwoCharacters) {
    auto block = block_with_events(0, 2);
    put(block, 304, real(number_format::intel, 0.5F));
    put(block, 396, characters("RS"));
    const auto events = c3d::decode_header(number_format::intel, block).events;
    ASSERT_EQ(events.size(), 1U); // the second one has no label, so it is none
    EXPECT_EQ(events[0].label, "RS");
}

TEST(Header, EventWithoutATimeIsLeftOut) {
    auto block = block_with_events(12345, 1);
    put(block, 304, hex("00 00 C0 7F"));
    EXPECT_TRUE(c3d::decode_header(number_format::intel, block).events.empty());
}

TEST(Header, ReservedContentIsNoticed) {
    header_block block{};
    block.fill(std::byte{0});
    EXPECT_FALSE(c3d::has_reserved_content(block));
    put(block, 2, hex("FF FF FF FF")); // counts are not reserved
    put(block, 296, hex("01"));        // nor is the block of labels and ranges
    EXPECT_FALSE(c3d::has_reserved_content(block));
    for (std::size_t offset : {24U, 293U, 302U, 394U, 468U, 511U}) {
        auto changed = block;
        changed[offset] = std::byte{1};
        EXPECT_TRUE(c3d::has_reserved_content(changed)) << offset;
    }
}

} // namespace
