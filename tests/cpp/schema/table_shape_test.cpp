#include "schema/table_shape.hpp"

#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

namespace {

using schema::extent_of_matrices;
using schema::has_blocks;
using schema::has_lists;
using schema::width_of_rows;
using extents = std::vector<std::int64_t>;

class CornersOf : public testing::TestWithParam<extents> {};
class ReversedCorners : public testing::TestWithParam<extents> {};

TEST_P(CornersOf, FollowOneAnother) { EXPECT_TRUE(has_blocks(GetParam(), {4, 3})); }
INSTANTIATE_TEST_SUITE_P(TableShape, CornersOf,
                         testing::Values(extents{2, 4, 3}, extents{4, 3}, extents{24},
                                         extents{2, 12}, extents{8, 3}, extents{1, 1, 24},
                                         extents{1, 4, 3}, extents{2, 4, 3, 1}, extents{0, 4, 3}));

TEST_P(ReversedCorners, HaveNoShape) { EXPECT_FALSE(has_blocks(GetParam(), {4, 3})); }
INSTANTIATE_TEST_SUITE_P(TableShape, ReversedCorners,
                         testing::Values(extents{3, 4, 2}, extents{3, 4}, extents{3, 4, 12},
                                         extents{3, 4, 1}, extents{2, 3, 4}, extents{12, 2}));

class PolynomialsOf : public testing::TestWithParam<extents> {};
class ReversedPolynomials : public testing::TestWithParam<extents> {};

TEST_P(PolynomialsOf, FollowOneAnother) { EXPECT_TRUE(has_lists(GetParam(), 12)); }
INSTANTIATE_TEST_SUITE_P(TableShape, PolynomialsOf,
                         testing::Values(extents{3, 12}, extents{3, 2, 6}, extents{3, 6, 2},
                                         extents{12}, extents{2, 6}, extents{6, 2}, extents{24},
                                         extents{1, 2, 6}, extents{6, 6, 2}, extents{2, 6, 2},
                                         extents{1, 6, 1, 2}, extents{0, 2, 6}));

TEST_P(ReversedPolynomials, HaveNoShape) { EXPECT_FALSE(has_lists(GetParam(), 12)); }
INSTANTIATE_TEST_SUITE_P(TableShape, ReversedPolynomials,
                         testing::Values(extents{12, 2}, extents{12, 3}, extents{12, 6},
                                         extents{6, 2, 3}, extents{2, 6, 3}, extents{6, 2, 2},
                                         extents{2, 6, 6}, extents{3, 4, 3}));

TEST(TableShape, RowsAreAsWideAsTheLastDimension) {
    EXPECT_EQ(width_of_rows({2, 8}, 2, 6), 8U);
    EXPECT_EQ(width_of_rows({2, 3}, 2, 6), 3U);
    EXPECT_EQ(width_of_rows({2, 1, 8}, 2, 6), 8U);
    EXPECT_EQ(width_of_rows({3, 8}, 5, 6), 8U);
    EXPECT_EQ(width_of_rows({12}, 2, 6), 0U);
}

TEST(TableShape, ReversedRowsHaveNoWidth) {
    EXPECT_FALSE(width_of_rows({6, 2}, 2, 6));
    EXPECT_FALSE(width_of_rows({6, 8}, 8, 6));
    EXPECT_FALSE(width_of_rows({6, 4}, 5, 6));
}

TEST(TableShape, MatricesAreTheLastTwoDimensions) {
    const auto extent = extent_of_matrices({2, 6, 8}, 2, 6);
    ASSERT_TRUE(extent);
    EXPECT_EQ(extent->rows, 8U);
    EXPECT_EQ(extent->columns, 6U);
    EXPECT_EQ(extent_of_matrices({6, 6}, 6, 6)->rows, 6U);
    EXPECT_EQ(extent_of_matrices({2, 64}, 2, 6)->rows, 8U);
    EXPECT_EQ(extent_of_matrices({16, 8}, 2, 6)->rows, 8U);
}

TEST(TableShape, OtherMatricesHaveNoExtent) {
    EXPECT_FALSE(extent_of_matrices({6, 6, 2}, 2, 6));
    EXPECT_FALSE(extent_of_matrices({6, 6, 8}, 8, 6));
    EXPECT_FALSE(extent_of_matrices({2, 5, 6}, 2, 6));
    EXPECT_FALSE(extent_of_matrices({36, 2}, 2, 6));
}

} // namespace
