#include "plugins/c3d/frames/frame_range.hpp"

#include <stdexcept>

#include <gtest/gtest.h>

#include <strata/data_store.hpp>

namespace {

using c3d::frame_range;
using c3d::frame_range_of;
using c3d::header_range_of;
using c3d::parameter_tree;

void expect_header(frame_range range, int first, int last) {
    const auto header = header_range_of(range);
    EXPECT_EQ(header.first, first);
    EXPECT_EQ(header.last, last);
}

std::optional<std::uint64_t> number_in(const parameter_tree& tree, const char* group,
                                       const char* name, std::uint64_t index = 0) {
    const auto table = tree.as_table();
    const auto* item = table.find(group, name);
    return item ? item->count(index) : std::nullopt;
}

parameter_tree put(frame_range range) {
    parameter_tree tree;
    c3d::put_frame_range(tree, range, strata::data_store().root());
    return tree;
}

TEST(FrameRange, FirstFrameIsOneWhoseTimeIsZero) {
    EXPECT_EQ(frame_range_of(100, 50.0, 0.0), (frame_range{100, 1}));
    EXPECT_EQ(frame_range_of(100, 50.0, 0.1), (frame_range{100, 6}));
    EXPECT_EQ(frame_range_of(100, 0.0, 0.1), (frame_range{100, 1}));
    EXPECT_EQ(frame_range_of(100, 50.0, -3.0), (frame_range{100, 1}));
}

TEST(FrameRange, IsRefusedWhereNumbersEnd) {
    try {
        (void)frame_range_of(10, 100.0, 42949672.9);
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "10 frames from frame 4294967291 on are more than a C3D file "
                                   "can number (4294967295)");
    }
}

TEST(FrameRange, HeaderHoldsWhatFits) {
    expect_header({100, 1}, 1, 100);
    expect_header({0, 1}, 1, 0);
    expect_header({100, 65436}, 65436, 65535);
}

TEST(FrameRange, HeaderOfALongRangeHasAnotherLength) {
    expect_header({65536, 1}, 1, 65535);
    expect_header({100, 65437}, 1, 65535);
    expect_header({1, 70000}, 1, 65535);
    expect_header({65535, 1}, 1, 65535);
    expect_header({65535, 6}, 6, 65535);
}

TEST(FrameRange, ShortCountsAreAWord) {
    const auto tree = put({65534, 1});
    EXPECT_EQ(number_in(tree, "POINT", "FRAMES"), 65534U);
    EXPECT_FALSE(number_in(tree, "POINT", "LONG_FRAMES"));
}

TEST(FrameRange, LongCountsAreTold) {
    const auto tree = put({70000, 11});
    EXPECT_EQ(number_in(tree, "POINT", "FRAMES"), 65535U);
    EXPECT_EQ(number_in(tree, "POINT", "LONG_FRAMES"), 70000U);
    EXPECT_EQ(number_in(tree, "TRIAL", "ACTUAL_START_FIELD", 0), 11U);
    EXPECT_EQ(number_in(tree, "TRIAL", "ACTUAL_START_FIELD", 1), 0U);
    EXPECT_EQ(number_in(tree, "TRIAL", "ACTUAL_END_FIELD", 0), 70010U - 65536U);
    EXPECT_EQ(number_in(tree, "TRIAL", "ACTUAL_END_FIELD", 1), 1U);
}

TEST(FrameRange, CountsBeyondWhatARealHoldsAreLeftToTheFields) {
    const auto tree = put({16777217, 1});
    EXPECT_EQ(number_in(tree, "POINT", "FRAMES"), 65535U);
    EXPECT_FALSE(number_in(tree, "POINT", "LONG_FRAMES"));
    EXPECT_EQ(number_in(tree, "TRIAL", "ACTUAL_END_FIELD", 0), 1U);
    EXPECT_EQ(number_in(tree, "TRIAL", "ACTUAL_END_FIELD", 1), 256U);
}

} // namespace
