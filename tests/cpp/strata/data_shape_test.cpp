#include "tests/cpp/strata/support/values.hpp"

namespace {

using strata::data_shape;
using strata::data_type;
using strata_test::shape;

TEST(DataShape, ScalarHasNoDimensionsAndOneElement) {
    const data_shape scalar{false};
    EXPECT_TRUE(scalar.dimensions().empty());
    EXPECT_EQ(scalar.element_count(), 1U);
}

TEST(DataShape, CountsTheProductOfItsDimensions) {
    EXPECT_EQ(shape({3, 4, 5}).element_count(), 60U);
}

TEST(DataShape, ZeroDimensionHasNoElements) { EXPECT_EQ(shape({3, 0, 5}).element_count(), 0U); }

TEST(DataShape, EqualWhenDimensionsAre) {
    EXPECT_TRUE(shape({2, 3}) == shape({2, 3}));
    EXPECT_FALSE(shape({2, 3}) == shape({3, 2}));
    EXPECT_FALSE(shape({1}) == data_shape{false});
}

TEST(DataType, HundredsDenoteTheSameKinds) {
    for (int value = 1; value <= 12; ++value) {
        EXPECT_EQ(element_kind(static_cast<data_type>(value + 100)), static_cast<data_type>(value));
    }
}

TEST(DataType, OtherValuesHaveNoKind) {
    for (int value : {-1, 0, 13, 99, 100, 113, 200, 201}) {
        EXPECT_EQ(element_kind(static_cast<data_type>(value)), data_type::invalid) << value;
        EXPECT_EQ(element_size(static_cast<data_type>(value)), 0U) << value;
    }
}

} // namespace
