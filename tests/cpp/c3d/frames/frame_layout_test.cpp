// What is read where header and parameters contradict each other, or are missing.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cpp/c3d/support/reading.hpp"
#include "tests/cpp/c3d/support/trial.hpp"

namespace {

using c3d::sample_storage;
using c3d_test::analogs_set;
using c3d_test::parameter_writer;
using c3d_test::points_set;
using c3d_test::reading;
using c3d_test::trial;
using testing::ElementsAre;

/// Enough frames that a wrong frame size shows in the file's length.
trial long_trial() {
    trial file;
    file.labels = {"A", "B"};
    file.samples.clear();
    for (int i = 0; i < 200; ++i) {
        const auto value = static_cast<float>(i);
        file.samples.push_back({value, 1, 2, 0});
        file.samples.push_back({value, 3, 4, 0});
    }
    return file;
}

/// 200 frames of two points that were read as they are.
void expect_all(const reading& found) {
    ASSERT_TRUE(found.status) << found.status.message(" ");
    ASSERT_THAT(found.shape(points_set), ElementsAre(3, 2, 200));
    const auto x = found.row(points_set, 0, 1);
    for (std::size_t i = 0; i < 200; ++i)
        ASSERT_EQ(x[i], static_cast<double>(i));
}

TEST(FrameLayout, ParametersAreBelievedBeforeTheHeader) {
    auto file = long_trial();
    file.header_words = {{2, 7}};
    const auto found = c3d_test::read(file.bytes());
    expect_all(found);
    EXPECT_TRUE(found.warns_about("POINT:USED is 2, the header says 7; 2 fits the file"));
}

TEST(FrameLayout, LengthDecidesAgainstTheParameters) {
    auto file = long_trial();
    file.more_parameters = [](parameter_writer& writer) {
        writer.words(trial::point, "USED", {3});
    };
    const auto found = c3d_test::read(file.bytes());
    expect_all(found);
    EXPECT_TRUE(found.warns_about("POINT:USED is 3, the header says 2; 2 fits the file"));
}

TEST(FrameLayout, HeaderServesWithoutParameters) {
    auto file = long_trial();
    file.left_out = {
        "POINT",        "POINT:USED",   "POINT:SCALE", "POINT:RATE",  "POINT:DATA_START",
        "POINT:FRAMES", "POINT:LABELS", "ANALOG",      "ANALOG:USED", "ANALOG:RATE"};
    const auto found = c3d_test::read(file.bytes());
    expect_all(found);
    EXPECT_THAT(found.numbers(points_set, "SampleRate"), ElementsAre(100.0));
    EXPECT_THAT(found.texts(points_set, "SetNames"), ElementsAre("unamed_0", "unamed_1"));
}

TEST(FrameLayout, ParametersServeWithoutTheHeader) {
    auto file = long_trial();
    file.header_words = {{2, 0}, {3, 0}, {4, 0}, {5, 0}, {7, 0}, {8, 0}, {9, 0}, {11, 0}, {12, 0}};
    expect_all(c3d_test::read(file.bytes()));
}

TEST(FrameLayout, ParametersMayHaveAnyNumericType) {
    auto file = long_trial();
    file.more_parameters = [](parameter_writer& writer) {
        writer.bytes(trial::point, "USED", {2}).reals(trial::point, "FRAMES", {200.0F});
        writer.words(trial::point, "RATE", {100});
    };
    file.header_words = {{2, 0}, {5, 0}};
    expect_all(c3d_test::read(file.bytes()));
}

TEST(FrameLayout, WithoutAScaleTheLengthTellsTheStorage) {
    for (auto storage : {sample_storage::real, sample_storage::integer}) {
        auto file = long_trial();
        file.storage = storage;
        file.scale = 0.0F;
        expect_all(c3d_test::read(file.bytes()));
    }
}

TEST(FrameLayout, WhereSignsOfTheScaleDifferTheLengthTells) {
    auto file = long_trial();
    file.more_parameters = [](parameter_writer& writer) {
        writer.reals(trial::point, "SCALE", {0.5F}); // the header says −0.1, the samples are reals
    };
    const auto found = c3d_test::read(file.bytes());
    expect_all(found);
    EXPECT_TRUE(found.warns_about("the samples are read as reals"));
}

TEST(FrameLayout, HeaderRateServesWhereTheParameterIsZero) {
    auto file = long_trial();
    file.more_parameters = [](parameter_writer& writer) {
        writer.reals(trial::point, "RATE", {0});
    };
    EXPECT_THAT(c3d_test::read(file.bytes()).numbers(points_set, "SampleRate"), ElementsAre(100.0));
}

/// 100 frames with two channels and four samples a frame.
trial analog_trial() {
    trial file;
    file.samples.assign(100, {1, 2, 3, 0});
    file.analog_labels = {"A", "B"};
    file.samples_per_frame = 4;
    for (int i = 0; i < 400; ++i) {
        file.analogs.push_back(static_cast<float>(i));
        file.analogs.push_back(-1);
    }
    return file;
}

void expect_all_analogs(const reading& found) {
    ASSERT_TRUE(found.status) << found.status.message(" ");
    ASSERT_THAT(found.shape(analogs_set), ElementsAre(1, 2, 400));
    const auto values = found.row(analogs_set, 0, 0);
    for (std::size_t i = 0; i < 400; ++i)
        ASSERT_EQ(values[i], static_cast<double>(i));
    EXPECT_THAT(found.numbers("Format/Header", "NumberAnalogSamplesPerPointSample"),
                ElementsAre(4));
    EXPECT_THAT(found.numbers("Format/Header", "TotalAnalogSamplesPer3dSample"), ElementsAre(8));
}

TEST(FrameLayout, SamplesFollowTheRatesWhereTheHeaderIsWrong) {
    auto file = analog_trial();
    file.header_words = {{3, 6}, {10, 3}};
    expect_all_analogs(c3d_test::read(file.bytes()));
}

TEST(FrameLayout, SamplesFollowTheHeaderWhereTheRateIsWrong) {
    auto file = analog_trial();
    file.more_parameters = [](parameter_writer& writer) {
        writer.reals(trial::analog, "RATE", {1000.0F});
    };
    const auto found = c3d_test::read(file.bytes());
    expect_all_analogs(found);
    EXPECT_THAT(found.numbers(analogs_set, "SampleRate"), ElementsAre(400.0));
    EXPECT_TRUE(found.warns_about("ANALOG:RATE is 1000 Hz"));
}

TEST(FrameLayout, SamplesAreRoundedFromTheRates) {
    auto file = analog_trial();
    file.header_words = {{3, 0}, {10, 0}};
    file.more_parameters = [](parameter_writer& writer) {
        writer.reals(trial::analog, "RATE", {399.9F});
    };
    const auto found = c3d_test::read(file.bytes());
    expect_all_analogs(found);
    EXPECT_THAT(found.numbers(analogs_set, "SampleRate"), ElementsAre(double{399.9F}));
}

TEST(FrameLayout, ChannelsFollowTheHeaderWithoutUsed) {
    auto file = analog_trial();
    file.left_out = {"ANALOG:USED"};
    expect_all_analogs(c3d_test::read(file.bytes()));
}

TEST(FrameLayout, ChannelsFollowTheParametersWhereWordsDoNotDivide) {
    auto file = analog_trial();
    file.header_words = {{3, 7}, {10, 4}};
    expect_all_analogs(c3d_test::read(file.bytes()));
}

TEST(FrameLayout, ZerosBeforeTheHeaderShiftEverything) {
    auto file = long_trial();
    file.leading_zeros = 1024;
    const auto found = c3d_test::read(file.bytes());
    expect_all(found);
    EXPECT_TRUE(found.warns_about("the header begins at byte 1024"));
}

TEST(FrameLayout, ZerosBeforeTheHeaderMayBeNoMultipleOfABlock) {
    auto file = long_trial();
    file.leading_zeros = 3;
    expect_all(c3d_test::read(file.bytes()));
}

TEST(FrameLayout, DataMayCountFromTheFileThoughZerosPrecedeTheHeader) {
    auto file = long_trial();
    file.leading_zeros = 512;
    file.header_words = {{9, 4}};
    file.more_parameters = [](parameter_writer& writer) {
        writer.words(trial::point, "DATA_START", {4});
    };
    expect_all(c3d_test::read(file.bytes()));
}

TEST(FrameLayout, MoreThan65535FramesAreReadWhateverTellsTheirNumber) {
    trial file;
    file.storage = sample_storage::integer;
    file.samples.assign(70000, {1, 2, 3, 0});
    file.samples.back() = {9, 8, 7, 0};
    const auto tell = [&](std::function<void(parameter_writer&)> parameters) {
        file.more_parameters = std::move(parameters);
        const auto found = c3d_test::read(file.bytes());
        EXPECT_THAT(found.shape(points_set), ElementsAre(3, 1, 70000));
        EXPECT_EQ(found.row(points_set, 0, 0).back(), 9 * double{0.1F});
    };
    tell([](auto& writer) { writer.reals(trial::point, "LONG_FRAMES", {70000}); });
    tell([](auto& writer) { writer.reals(trial::point, "FRAMES", {70000}); });
    tell([](auto& writer) { writer.words(trial::point, "FRAMES", {70000 - 65536}); });
    tell([](auto& writer) { writer.words(trial::point, "FRAMES", {65535}); });
    tell([](auto& writer) {
        writer.group(9, "TRIAL").words(9, "ACTUAL_START_FIELD", {1, 0}, {2});
        writer.words(9, "ACTUAL_END_FIELD", {70000 - 65536, 1}, {2});
    });
}

} // namespace
