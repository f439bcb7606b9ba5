#include "schema/plate_frame.hpp"

#include <cmath>
#include <cstddef>
#include <limits>

#include <gtest/gtest.h>

namespace {

using schema::frame_of_corners;
using schema::plate_corners;
using schema::vector3;

constexpr plate_corners floor_plate = {{{0, 600, 0}, {400, 600, 0}, {400, 0, 0}, {0, 0, 0}}};

double product(const vector3& left, const vector3& right) {
    return left[0] * right[0] + left[1] * right[1] + left[2] * right[2];
}

TEST(PlateFrame, LiesInTheFloorWithZDown) {
    const auto frame = frame_of_corners(floor_plate);
    ASSERT_TRUE(frame);
    EXPECT_EQ(frame->x, (vector3{-1, 0, 0}));
    EXPECT_EQ(frame->y, (vector3{0, 1, 0}));
    EXPECT_EQ(frame->z, (vector3{0, 0, -1}));
    EXPECT_EQ(frame->centre, (vector3{200, 300, 0}));
}

TEST(PlateFrame, TakesVectorsToTheLaboratory) {
    const auto frame = frame_of_corners(floor_plate);
    EXPECT_EQ(frame->to_laboratory({30, -12, 700}), (vector3{-30, -12, -700}));
}

TEST(PlateFrame, IsOrthonormalForSkewCorners) {
    const auto frame = frame_of_corners({{{2, 603, 1}, {407, 600, -4}, {400, 9, 0}, {-8, 0, 6}}});
    ASSERT_TRUE(frame);
    EXPECT_NEAR(product(frame->x, frame->x), 1.0, 1e-15);
    EXPECT_NEAR(product(frame->y, frame->y), 1.0, 1e-15);
    EXPECT_NEAR(product(frame->z, frame->z), 1.0, 1e-15);
    EXPECT_NEAR(product(frame->x, frame->y), 0.0, 1e-15);
    EXPECT_NEAR(product(frame->y, frame->z), 0.0, 1e-15);
    EXPECT_NEAR(product(frame->z, frame->x), 0.0, 1e-15);
}

TEST(PlateFrame, NeedsCornersThatSpanAPlane) {
    EXPECT_FALSE(frame_of_corners({}));
    EXPECT_FALSE(frame_of_corners({{{5, 5, 5}, {5, 5, 5}, {5, 5, 5}, {5, 5, 5}}}));
    EXPECT_FALSE(frame_of_corners({{{0, 0, 0}, {1, 1, 1}, {2, 2, 2}, {3, 3, 3}}}));
    EXPECT_FALSE(frame_of_corners({{{1, 1, 0}, {1, 1, 0}, {0, 0, 0}, {1, 0, 0}}}));
}

TEST(PlateFrame, IsNotMadeOfWhatIsNoNumber) {
    for (const auto value :
         {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        for (std::size_t corner = 0; corner < 4; ++corner) {
            for (std::size_t axis = 0; axis < 3; ++axis) {
                auto corners = floor_plate;
                corners[corner][axis] = value;
                EXPECT_FALSE(frame_of_corners(corners)) << corner << " " << axis;
            }
        }
    }
}

TEST(PlateFrame, DoesNotDependOnTheUnitOfLength) {
    for (const auto unit : {1e-3, 1e-9, 1e9}) {
        auto corners = floor_plate;
        for (auto& corner : corners) {
            for (auto& coordinate : corner)
                coordinate *= unit;
        }
        ASSERT_TRUE(frame_of_corners(corners)) << unit;
        EXPECT_EQ(frame_of_corners(corners)->z, (vector3{0, 0, -1}));
    }
}

} // namespace
