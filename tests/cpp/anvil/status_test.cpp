#include <utility>

#include <gtest/gtest.h>

#include <anvil/status.hpp>

namespace {

using anvil::status;

TEST(Status, NewOneIsSuccessWithoutText) {
    const status outcome;
    EXPECT_TRUE(outcome);
    EXPECT_EQ(outcome.message("; "), "");
}

TEST(Status, FailureIsFalseAndTellsItsMessage) {
    const status outcome = status::failure("byte 512: no parameter block");
    EXPECT_FALSE(outcome);
    EXPECT_EQ(outcome.message("; "), "byte 512: no parameter block");
}

TEST(Status, FailureWithoutTextIsStillAFailure) { EXPECT_FALSE(status::failure("")); }

TEST(Status, MessagesOfFailedStepsAreJoinedInOrder) {
    status outcome = status::failure("reading failed");
    outcome.add(status::failure("header").add(status::failure("events")));
    outcome.add(status::failure("points"));
    EXPECT_EQ(outcome.message("\n\t - "), "reading failed\n\t - header\n\t - events\n\t - points");
}

TEST(Status, FailedStepMakesASuccessAFailure) {
    status outcome;
    outcome.add(status::failure("step"));
    EXPECT_FALSE(outcome);
}

TEST(Status, SuccessfulStepChangesNothing) {
    status outcome;
    EXPECT_TRUE(outcome.add(status{}));
    outcome.add(status::failure("step"));
    outcome.add(status{});
    EXPECT_EQ(outcome.message(", "), "step");
}

TEST(Status, CanBeAddedToItself) {
    status outcome = status::failure("again");
    outcome.add(outcome);
    EXPECT_EQ(outcome.message(" "), "again again");
}

TEST(Status, MoveAssignmentHandsTheMessagesOver) {
    status outcome;
    outcome = status::failure("moved");
    EXPECT_EQ(outcome.message(" "), "moved");
}

} // namespace
