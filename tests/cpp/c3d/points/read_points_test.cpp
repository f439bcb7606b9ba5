#include <cmath>
#include <string>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cpp/c3d/support/reading.hpp"
#include "tests/cpp/c3d/support/trial.hpp"

namespace {

using c3d::number_format;
using c3d::sample_storage;
using c3d_test::parameter_writer;
using c3d_test::points_set;
using c3d_test::trial;
using testing::ElementsAre;

class PointsOfEveryProcessor : public testing::TestWithParam<number_format> {};

TEST_P(PointsOfEveryProcessor, RealsAreTheCoordinates) {
    trial file;
    file.format = GetParam();
    file.labels = {"A", "B"};
    file.samples = {{1.5F, -2, 3, 5}, {4, 5, 6, 0}, {7, 8, 9, 0}, {10, 11, 12.25F, 0}};
    const auto found = c3d_test::read(file.bytes());
    ASSERT_TRUE(found.status) << found.status.message(" ");
    EXPECT_THAT(found.values(points_set), ElementsAre(1.5, 7, 4, 10, -2, 8, 5, 11, 3, 9, 6, 12.25));
    EXPECT_TRUE(found.warnings.empty());
}

TEST_P(PointsOfEveryProcessor, IntegersAreScaled) {
    trial file;
    file.format = GetParam();
    file.storage = sample_storage::integer;
    file.samples = {{1005, -202, 9500, 0x0305}, {-32768, 32767, 0, 0}};
    const auto found = c3d_test::read(file.bytes());
    const double scale = 0.1F;
    EXPECT_THAT(found.values(points_set), ElementsAre(1005 * scale, -32768 * scale, -202 * scale,
                                                      32767 * scale, 9500 * scale, 0.0));
    EXPECT_THAT(found.numbers(points_set, "Residuals"), ElementsAre(773.0, 0.0));
}

INSTANTIATE_TEST_SUITE_P(Processors, PointsOfEveryProcessor,
                         testing::Values(number_format::intel, number_format::dec,
                                         number_format::mips));

TEST(ReadPoints, ManyBlocksOfFramesAreOneSeries) {
    trial file;
    file.labels = {"A", "B", "C"};
    file.samples.clear();
    constexpr int frames = 12345; // more than one block of frames, and no whole number of tiles
    for (int f = 0; f < frames; ++f) {
        for (int p = 0; p < 3; ++p) {
            file.samples.push_back({static_cast<float>(f), static_cast<float>(p), 1, 0});
        }
    }
    const auto found = c3d_test::read(file.bytes());
    const auto x = found.row(points_set, 0, 2);
    ASSERT_EQ(x.size(), static_cast<std::size_t>(frames));
    for (int f = 0; f < frames; ++f)
        ASSERT_EQ(x[static_cast<std::size_t>(f)], f);
    EXPECT_EQ(found.row(points_set, 1, 2).back(), 2.0);
}

TEST(ReadPoints, LabelsAreVerbatimAndNamesDistinct) {
    trial file;
    file.labels = {"L/R", "A", "A", ""};
    file.samples.assign(4, {1, 2, 3, 0});
    const auto found = c3d_test::read(file.bytes());
    EXPECT_THAT(found.texts(points_set, "Labels"), ElementsAre("L/R", "A", "A", ""));
    EXPECT_THAT(found.texts(points_set, "SetNames"), ElementsAre("L_R", "A", "A_2", "unamed_3"));
}

TEST(ReadPoints, MissingLabelsAreEmpty) {
    trial file;
    file.labels = {"A", "B"};
    file.samples.assign(2, {1, 2, 3, 0});
    file.more_parameters = [](parameter_writer& writer) {
        writer.texts(trial::point, "LABELS", {"A"}, 4);
    };
    const auto found = c3d_test::read(file.bytes());
    EXPECT_THAT(found.texts(points_set, "Labels"), ElementsAre("A", ""));
    EXPECT_THAT(found.texts(points_set, "SetNames"), ElementsAre("A", "unamed_1"));
}

TEST(ReadPoints, TypesUnitsAndDescriptionsFollowTheirLabels) {
    trial file;
    file.labels = {"LASI", "LKnee"};
    file.samples.assign(2, {1, 2, 3, 0});
    file.more_parameters = [](parameter_writer& writer) {
        writer.text(trial::point, "UNITS", "m");
        writer.texts(trial::point, "ANGLES", {"LKnee"}, 8);
        writer.texts(trial::point, "DESCRIPTIONS", {"Left ASIS"}, 12);
    };
    const auto found = c3d_test::read(file.bytes());
    EXPECT_THAT(found.texts(points_set, "Types"), ElementsAre("marker", "angle"));
    EXPECT_THAT(found.texts(points_set, "Units"), ElementsAre("m", "deg"));
    EXPECT_THAT(found.texts(points_set, "Descriptions"), ElementsAre("Left ASIS", ""));
}

TEST(ReadPoints, MoreThan255HaveTheirLabels) {
    trial file;
    file.labels.clear();
    for (int i = 0; i < 600; ++i)
        file.labels.push_back(fmt::format("P{}", i));
    file.samples.assign(600, {1, 2, 3, 0});
    const auto all = file.labels;
    file.left_out = {"POINT:LABELS"};
    file.more_parameters = [&](parameter_writer& writer) {
        writer.texts(trial::point, "LABELS", {all.begin(), all.begin() + 255}, 8);
        writer.texts(trial::point, "LABELS2", {all.begin() + 255, all.begin() + 510}, 8);
        writer.texts(trial::point, "LABELS3", {all.begin() + 510, all.end()}, 8);
    };
    const auto found = c3d_test::read(file.bytes());
    EXPECT_EQ(found.texts(points_set, "Labels"), all);
}

TEST(ReadPoints, StartTimeIsThatOfTheFirstStoredFrame) {
    trial file;
    file.first_frame = 33;
    EXPECT_THAT(c3d_test::read(file.bytes()).numbers(points_set, "StartTime"), ElementsAre(0.32));
}

TEST(ReadPoints, WithoutARateTimeIsUnknown) {
    trial file;
    file.rate = 0.0F;
    file.first_frame = 33;
    const auto found = c3d_test::read(file.bytes());
    EXPECT_THAT(found.numbers(points_set, "SampleRate"), ElementsAre(0.0));
    EXPECT_THAT(found.numbers(points_set, "StartTime"), ElementsAre(0.0));
    EXPECT_TRUE(found.warns_about("neither POINT:RATE nor the header tell the frame rate"));
}

TEST(ReadPoints, LatinLabelsAreReadable) {
    trial file;
    file.labels = {"M\xFCller"};
    EXPECT_THAT(c3d_test::read(file.bytes()).texts(points_set, "Labels"),
                ElementsAre("M\xC3\xBCller"));
}

} // namespace
