#include "schema/partial_reading.hpp"

#include <gtest/gtest.h>

#include <strata/data_store.hpp>

namespace {

using schema::unread_channels;
using schema::wanted_kinds;

class PartialReading : public testing::Test {
  protected:
    strata::data_store store_;
};

TEST_F(PartialReading, EverythingIsWantedUnlessSomethingIsAskedFor) {
    EXPECT_TRUE(wanted_kinds().contain("Markers"));
    EXPECT_TRUE(wanted_kinds(store_.root()).contain("Markers"));
}

TEST_F(PartialReading, WhatIsAskedForIsWanted) {
    schema::ask_for_kinds(store_.root(), {"Markers", "Analogs"});
    const wanted_kinds wanted(store_.root());
    EXPECT_TRUE(wanted.contain("Analogs"));
    EXPECT_FALSE(wanted.contain("Angles"));
    EXPECT_FALSE(wanted.contain("analogs"));
}

TEST_F(PartialReading, AskingForNothingWantsNothing) {
    schema::ask_for_kinds(store_.root(), {});
    EXPECT_FALSE(wanted_kinds(store_.root()).contain("Markers"));
}

TEST_F(PartialReading, WhatWasAskedIsForgotten) {
    schema::ask_for_kinds(store_.root(), {"Markers"});
    schema::forget_asked_kinds(store_.root());
    EXPECT_TRUE(store_.root().list_attributes_name().empty());
    schema::forget_asked_kinds(store_.root());
}

TEST_F(PartialReading, NothingIsKeptOfAWholeFile) {
    schema::keep_unread(store_.root(), {});
    EXPECT_TRUE(store_.root().list_attributes_name().empty());
    EXPECT_TRUE(schema::unread_of(store_.root()).kinds.empty());
    EXPECT_EQ(schema::counts_of(schema::unread_of(store_.root())), "");
}

TEST_F(PartialReading, KeepingMoreAddsToWhatIsThere) {
    unread_channels first;
    first.add("Angles", "Knee", "deg");
    unread_channels second;
    second.add("Analogs", "Fz", "N");
    second.add("Analogs", "EMG", "");
    schema::keep_unread(store_.root(), first);
    schema::keep_unread(store_.root(), second);
    const auto kept = schema::unread_of(store_.root());
    EXPECT_EQ(kept.kinds, (std::vector<std::string>{"Angles", "Analogs", "Analogs"}));
    EXPECT_EQ(kept.labels, (std::vector<std::string>{"Knee", "Fz", "EMG"}));
    EXPECT_EQ(kept.units, (std::vector<std::string>{"deg", "N", ""}));
    EXPECT_TRUE(kept.contain("Angles"));
    EXPECT_FALSE(kept.contain("Markers"));
}

TEST_F(PartialReading, ChannelsOfAnotherFileAreNoneOfItsOwn) {
    unread_channels own;
    own.add("Angles", "Knee", "deg");
    unread_channels other;
    other.add("Analogs", "Fz", "N");
    schema::keep_unread_of_other(store_.root(), other);
    schema::keep_unread(store_.root(), own);
    EXPECT_EQ(schema::unread_of_file(store_.root()).labels, (std::vector<std::string>{"Knee"}));
    EXPECT_EQ(schema::unread_of(store_.root()).labels, (std::vector<std::string>{"Knee", "Fz"}));
    EXPECT_TRUE(schema::unread_of_file(store_.root()).labels_of("Analogs").empty());
}

TEST_F(PartialReading, LabelsAreThoseOfOneKind) {
    unread_channels channels;
    channels.add("Analogs", "Fx", "N");
    channels.add("Angles", "Knee", "deg");
    channels.add("Analogs", "Fy", "N");
    EXPECT_EQ(channels.labels_of("Analogs"), (std::vector<std::string>{"Fx", "Fy"}));
}

TEST_F(PartialReading, CountsNameEachKindOnceInOneOrder) {
    unread_channels channels;
    for (const auto* kind : {"Rotations", "Analogs", "Markers", "Analogs"})
        channels.add(kind, "", "");
    EXPECT_EQ(schema::counts_of(channels), "1 marker, 2 analog channels and 1 rotation");
}

} // namespace
