#include "plugins/opensim/sample_rows.hpp"

#include <cmath>

#include <gtest/gtest.h>

namespace {

using opensim::numbers_of;
using opensim::sample_rows;

TEST(SampleRows, BecomeChannelsComponentByComponent) {
    sample_rows rows(6);
    constexpr std::size_t count = 30000; // more than a block
    for (std::size_t row = 0; row < count; ++row) {
        const auto numbers = rows.add();
        for (std::size_t column = 0; column < 6; ++column)
            numbers[column] = static_cast<double>(10 * row + column);
    }
    const auto channels = rows.take_channels(3);
    ASSERT_EQ(channels.size(), 2U);
    for (std::size_t row = 0; row < count; ++row) {
        for (std::size_t column = 0; column < 6; ++column) {
            ASSERT_EQ(numbers_of(channels[column / 3])[column % 3 * count + row],
                      static_cast<double>(10 * row + column));
        }
    }
}

TEST(SampleRows, AreNaNUntilTheyAreFilledAndMayBeTakenBack) {
    sample_rows rows(1);
    rows.add()[0] = 1.0;
    rows.add()[0] = 2.0;
    rows.remove_last();
    EXPECT_TRUE(std::isnan(rows.add()[0]));
    EXPECT_EQ(rows.count(), 2U);
    EXPECT_EQ(numbers_of(rows.take_channels(1)[0])[0], 1.0);
}

TEST(SampleRows, MayHaveNoColumns) {
    sample_rows rows(0);
    EXPECT_TRUE(rows.add().empty());
    EXPECT_EQ(rows.count(), 1U);
    EXPECT_TRUE(rows.take_channels(3).empty());
}

} // namespace
