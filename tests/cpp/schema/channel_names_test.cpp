#include "schema/channel_names.hpp"

#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using schema::distinct_names;
using testing::ElementsAre;

TEST(ChannelNames, DistinctLabelsAreTheNames) {
    EXPECT_THAT(distinct_names({"LASI", "RASI", "a b"}), ElementsAre("LASI", "RASI", "a b"));
}

TEST(ChannelNames, RepeatedLabelsAreNumbered) {
    EXPECT_THAT(distinct_names({"A", "A", "B", "A"}), ElementsAre("A", "A_2", "B", "A_3"));
}

TEST(ChannelNames, LabelThatLooksNumberedKeepsItsName) {
    EXPECT_THAT(distinct_names({"A", "A", "A_2"}), ElementsAre("A", "A_3", "A_2"));
}

TEST(ChannelNames, SeparatorsOfPathsAreReplaced) {
    EXPECT_THAT(distinct_names({"L/R", "L\\R", "L_R"}), ElementsAre("L_R_2", "L_R_3", "L_R"));
}

TEST(ChannelNames, TextWithoutSeparatorsIsAComponent) {
    EXPECT_TRUE(schema::is_path_component("L R."));
    EXPECT_FALSE(schema::is_path_component(""));
    EXPECT_FALSE(schema::is_path_component("L/R"));
    EXPECT_FALSE(schema::is_path_component("LR\\"));
    EXPECT_EQ(schema::path_component("/L\\R"), "_L_R");
}

TEST(ChannelNames, MissingLabelsAreNamedByTheirIndex) {
    EXPECT_THAT(distinct_names({"", "A", ""}), ElementsAre("unamed_0", "A", "unamed_2"));
}

TEST(ChannelNames, MissingLabelEvadesALabelThatLooksLikeIt) {
    EXPECT_THAT(distinct_names({"", "unamed_0"}), ElementsAre("unamed_1", "unamed_0"));
}

TEST(ChannelNames, ManyChannelsOfOneLabelAreAllDistinct) {
    const auto names = distinct_names(std::vector<std::string>(60000, "A"));
    EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), 60000U);
    EXPECT_EQ(names.back(), "A_60000");
}

} // namespace
