#include "plugins/c3d/section_places.hpp"

#include <gtest/gtest.h>

#include "plugins/c3d/bytes/export_error.hpp"

namespace {

using c3d::places_of;

TEST(SectionPlaces, SamplesComeFirst) {
    EXPECT_EQ(places_of(3, 1000, 0).data, 5U);
    EXPECT_EQ(places_of(3, 1000, 0).rotations, 0U);
    const auto places = places_of(3, 1025, 10);
    EXPECT_EQ(places.data, 5U);
    EXPECT_EQ(places.rotations, 8U);
    EXPECT_FALSE(places.rotations_come_first());
}

TEST(SectionPlaces, RotationsComeFirstWhereBlocksBehindTheSamplesHaveNoNumber) {
    EXPECT_EQ(places_of(1, 65532U * 512U, 600).rotations, 65535U);
    const auto places = places_of(1, 65533U * 512U, 600);
    EXPECT_EQ(places.rotations, 3U);
    EXPECT_EQ(places.data, 5U);
    EXPECT_TRUE(places.rotations_come_first());
}

TEST(SectionPlaces, TwoLongSectionsAreRefused) {
    try {
        (void)places_of(1, 65533U * 512U, 65533U * 512U);
        FAIL();
    } catch (const c3d::export_error& error) {
        EXPECT_STREQ(error.what(), "ROTATION:DATA_START would be block 65536, or POINT:DATA_START "
                                   "block 65536; a C3D file holds 65535");
    }
}

TEST(SectionPlaces, RotationsWithMissingRowsCannotComeFirst) {
    EXPECT_EQ(places_of(1, 65532U * 512U, 600, false).rotations, 65535U);
    try {
        (void)places_of(1, 65533U * 512U, 600, false);
        FAIL();
    } catch (const c3d::export_error& error) {
        EXPECT_STREQ(error.what(), "the rotations come before samples of 33552896 bytes, and some "
                                   "of them are missing; the number of frames, set anew, fills "
                                   "them up");
    }
}

} // namespace
