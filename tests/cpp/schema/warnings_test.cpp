#include "schema/warnings.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using schema::warnings;
using testing::ElementsAre;

TEST(Warnings, EachTextIsKeptOnce) {
    warnings notes;
    notes.add("channel {} is odd", 1);
    notes.add("channel {} is odd", 2);
    notes.add("channel {} is odd", 1);
    EXPECT_THAT(notes.texts(), ElementsAre("channel 1 is odd", "channel 2 is odd"));
}

TEST(Warnings, OthersAreAdded) {
    warnings notes;
    notes.add("a");
    warnings others;
    others.add("a");
    others.add("b");
    notes.add_all(others);
    EXPECT_THAT(notes.texts(), ElementsAre("a", "b"));
}

} // namespace
