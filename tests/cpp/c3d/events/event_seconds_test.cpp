#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "plugins/c3d/events/read_events.hpp"

namespace {

using c3d::event_seconds;
using testing::ElementsAre;

TEST(EventSeconds, PairsAreMinutesAndSeconds) {
    EXPECT_THAT(event_seconds({0, 0.5F, 2, 1.25F}, {2, 2}, 2), ElementsAre(0.5F, 121.25F));
    EXPECT_THAT(event_seconds({0, 0.5F, 2, 1.25F, 1, 0}, {3, 2}, 3),
                ElementsAre(0.5F, 121.25F, 60.0F));
}

TEST(EventSeconds, PairsAreAddedInDoublePrecision) {
    // In single precision, 1000 minutes and 0.001 s would first become 60000 and then stay so.
    EXPECT_THAT(event_seconds({1000, 0.003F}, {1, 2}, 1),
                ElementsAre(static_cast<float>(60000.0 + double{0.003F})));
}

TEST(EventSeconds, OneRowIsSeconds) {
    EXPECT_THAT(event_seconds({0.5F, 61}, {2, 1}, 2), ElementsAre(0.5F, 61.0F));
    EXPECT_THAT(event_seconds({0.5F, 61}, {2}, 2), ElementsAre(0.5F, 61.0F));
    EXPECT_THAT(event_seconds({0.5F}, {}, 1), ElementsAre(0.5F));
}

TEST(EventSeconds, FlatPairsAreToldByTheirNumber) {
    EXPECT_THAT(event_seconds({0, 0.5F, 1, 2}, {4}, 2), ElementsAre(0.5F, 62.0F));
}

TEST(EventSeconds, ExchangedDimensionsStillHoldPairs) {
    EXPECT_THAT(event_seconds({0, 0.5F, 1, 2.5F, 0, 3}, {2, 3}, 3), ElementsAre(0.5F, 62.5F, 3.0F));
}

TEST(EventSeconds, ExchangedDimensionsMayHoldAllMinutesFirst) {
    EXPECT_THAT(event_seconds({0, 1, 0, 0.5F, 2.5F, 3.5F}, {2, 3}, 3),
                ElementsAre(0.5F, 62.5F, 3.5F));
}

TEST(EventSeconds, NothingIsNothing) { EXPECT_TRUE(event_seconds({}, {0, 2}, 0).empty()); }

} // namespace
