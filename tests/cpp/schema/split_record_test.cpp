#include "schema/split_record.hpp"

#include <gtest/gtest.h>

#include <strata/data_store.hpp>

namespace {

using schema::raw_channels;
using schema::record_split;
using schema::unsplit_channels;

class SplitRecord : public testing::Test {
  protected:
    strata::data_store store_;
    strata::data_set raw_ = store_.root().create_set("Points", strata::data_shape({3, 5, 2}, false),
                                                     strata::data_type::float64);
};

TEST_F(SplitRecord, WithoutARecordNoChannelWasSplit) {
    EXPECT_EQ(raw_channels(raw_), 5);
    EXPECT_EQ(unsplit_channels(raw_), 5);
}

TEST_F(SplitRecord, TheLastRecordCounts) {
    record_split(raw_, 5);
    EXPECT_EQ(unsplit_channels(raw_), 0);
    record_split(raw_, 3);
    EXPECT_EQ(unsplit_channels(raw_), 2);
}

TEST_F(SplitRecord, MoreThanThereAreLeavesNone) {
    record_split(raw_, 6);
    EXPECT_EQ(unsplit_channels(raw_), 0);
}

TEST_F(SplitRecord, NoSetAndASetOfAnotherShapeHaveNoChannels) {
    EXPECT_EQ(unsplit_channels({}), 0);
    const auto flat = store_.root().create_set("Flat", strata::data_shape({5}, false),
                                               strata::data_type::float64);
    EXPECT_EQ(unsplit_channels(flat), 0);
}

} // namespace
