#include <cmath>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cpp/c3d/support/reading.hpp"
#include "tests/cpp/c3d/support/trial.hpp"

namespace {

using c3d::sample_storage;
using c3d_test::points_set;
using c3d_test::trial;
using testing::Each;
using testing::ElementsAre;
using testing::IsNan;

TEST(Residuals, AreKeptAsTheFileHasThem) {
    trial file;
    file.samples = {{1, 2, 3, 773}, {1, 2, 3, 0.84F}, {0, 0, 0, -1}};
    const auto found = c3d_test::read(file.bytes());
    EXPECT_THAT(found.numbers(points_set, "Residuals"), ElementsAre(773.0, double{0.84F}, -1.0));
}

TEST(Residuals, HaveARowForEachPoint) {
    trial file;
    file.labels = {"A", "B"};
    file.samples = {{1, 2, 3, 1}, {1, 2, 3, 2}, {1, 2, 3, 3}, {1, 2, 3, 4}};
    const auto found = c3d_test::read(file.bytes());
    const auto shape = found.attribute(points_set, "Residuals").shape();
    EXPECT_THAT(shape.dimensions(), ElementsAre(2, 2));
    EXPECT_THAT(found.numbers(points_set, "Residuals"), ElementsAre(1, 3, 2, 4));
}

TEST(Residuals, UnsignedMinusOneIsInvalidInBothStorages) {
    trial file;
    file.samples = {{1, 2, 3, 65535}, {1, 2, 3, 0}};
    EXPECT_THAT(c3d_test::read(file.bytes()).row(points_set, 0, 0)[0], IsNan());
    file.storage = sample_storage::integer;
    EXPECT_THAT(c3d_test::read(file.bytes()).row(points_set, 0, 0)[0], IsNan());
}

TEST(Residuals, WhereNoneIsValidSamplesWithCoordinatesCount) {
    trial file;
    file.samples = {{1, 2, 3, -1}, {0, 0, 0, -1}, {4, 5, 6, -1}};
    const auto found = c3d_test::read(file.bytes());
    EXPECT_THAT(found.row(points_set, 0, 0), ElementsAre(1.0, IsNan(), 4.0));
    EXPECT_THAT(found.numbers(points_set, "Residuals"), ElementsAre(0.0, -1.0, 0.0));
    EXPECT_TRUE(found.warns_about("every sample of every point is marked as invalid"));
}

TEST(Residuals, WhereNoneIsValidSamplesThatAreNoNumbersStayInvalid) {
    trial file;
    file.samples = {{1, 2, 3, -1}, {NAN, 0, 0, -1}};
    const auto found = c3d_test::read(file.bytes());
    EXPECT_THAT(found.row(points_set, 2, 0)[1], IsNan());
    EXPECT_THAT(found.numbers(points_set, "Residuals"), ElementsAre(0.0, -1.0));
}

TEST(Residuals, WithoutCoordinatesNothingIsValid) {
    trial file;
    file.samples = {{0, 0, 0, -1}, {0, 0, 0, -1}};
    const auto found = c3d_test::read(file.bytes());
    EXPECT_THAT(found.values(points_set), Each(IsNan()));
    EXPECT_THAT(found.numbers(points_set, "Residuals"), Each(-1.0));
    EXPECT_TRUE(found.warnings.empty());
}

TEST(Residuals, OneValidSampleMakesTheRestInvalid) {
    trial file;
    file.labels = {"A", "B"};
    file.samples = {{1, 2, 3, -1}, {1, 2, 3, 0}};
    const auto found = c3d_test::read(file.bytes());
    EXPECT_THAT(found.row(points_set, 0, 0), ElementsAre(IsNan()));
    EXPECT_THAT(found.row(points_set, 0, 1), ElementsAre(1.0));
}

TEST(Residuals, ThereAreNoneWithoutPoints) {
    trial file;
    file.labels.clear();
    const auto found = c3d_test::read(file.bytes());
    ASSERT_TRUE(found.status) << found.status.message(" ");
    EXPECT_FALSE(found.attribute(points_set, "Residuals"));
    EXPECT_THAT(found.shape(points_set), ElementsAre(3, 0, 0));
}

} // namespace
