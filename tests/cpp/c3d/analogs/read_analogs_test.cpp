#include <string>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cpp/c3d/support/reading.hpp"
#include "tests/cpp/c3d/support/trial.hpp"

namespace {

using c3d::number_format;
using c3d::sample_storage;
using c3d_test::analogs_set;
using c3d_test::parameter_writer;
using c3d_test::trial;
using testing::ElementsAre;

/// Two frames of one point, with two channels and two samples a frame.
trial two_channels() {
    trial file;
    file.analog_labels = {"A", "B"};
    file.samples_per_frame = 2;
    file.analogs = {1, 10, 2, 20, 3, 30, 4, 40};
    return file;
}

/// One channel that holds `values`, one a frame.
trial one_channel(std::vector<float> values) {
    trial file;
    file.samples.assign(values.size(), {1, 2, 3, 0});
    file.analog_labels = {"A"};
    file.analogs = std::move(values);
    return file;
}

class AnalogsOfEveryProcessor : public testing::TestWithParam<number_format> {};

TEST_P(AnalogsOfEveryProcessor, SamplesAreInOrderInBothStorages) {
    for (auto storage : {sample_storage::real, sample_storage::integer}) {
        auto file = two_channels();
        file.format = GetParam();
        file.storage = storage;
        const auto found = c3d_test::read(file.bytes());
        ASSERT_TRUE(found.status) << found.status.message(" ");
        EXPECT_THAT(found.shape(analogs_set), ElementsAre(1, 2, 4));
        EXPECT_THAT(found.values(analogs_set), ElementsAre(1, 2, 3, 4, 10, 20, 30, 40));
        EXPECT_TRUE(found.warnings.empty());
    }
}

INSTANTIATE_TEST_SUITE_P(Processors, AnalogsOfEveryProcessor,
                         testing::Values(number_format::intel, number_format::dec,
                                         number_format::mips));

TEST(ReadAnalogs, ValueIsRawMinusOffsetTimesBothScales) {
    auto file = two_channels();
    file.more_parameters = [](parameter_writer& writer) {
        writer.reals(trial::analog, "GEN_SCALE", {-2});
        writer.reals(trial::analog, "SCALE", {0.5F, 3}, {2})
            .words(trial::analog, "OFFSET", {1, 20}, {2});
    };
    const auto found = c3d_test::read(file.bytes());
    EXPECT_THAT(found.values(analogs_set), ElementsAre(0, -1, -2, -3, 60, 0, -60, -120));
    EXPECT_THAT(found.numbers(analogs_set, "Scales"), ElementsAre(0.5, 3));
    EXPECT_THAT(found.numbers(analogs_set, "Offsets"), ElementsAre(1, 20));
}

TEST(ReadAnalogs, OffsetMayBeReal) {
    auto file = one_channel({5, 6});
    file.more_parameters = [](parameter_writer& writer) {
        writer.reals(trial::analog, "OFFSET", {0.5F}, {1});
    };
    EXPECT_THAT(c3d_test::read(file.bytes()).values(analogs_set), ElementsAre(4.5, 5.5));
}

TEST(ReadAnalogs, DifferenceBeyond16BitsDoesNotOverflow) {
    auto file = one_channel({32767, -32768});
    file.storage = sample_storage::integer;
    file.more_parameters = [](parameter_writer& writer) {
        writer.words(trial::analog, "OFFSET", {-20000}, {1});
    };
    EXPECT_THAT(c3d_test::read(file.bytes()).values(analogs_set), ElementsAre(52767, -12768));
}

TEST(ReadAnalogs, UnsignedFormatMakesSamplesAndOffsetUnsigned) {
    auto file = one_channel({36864, 100});
    file.storage = sample_storage::integer;
    file.more_parameters = [](parameter_writer& writer) {
        writer.text(trial::analog, "FORMAT", "UNSIGNED").reals(trial::analog, "GEN_SCALE", {2});
        writer.reals(trial::analog, "SCALE", {0.5F}, {1});
        writer.words(trial::analog, "OFFSET", {32768}, {1});
    };
    const auto found = c3d_test::read(file.bytes());
    EXPECT_THAT(found.values(analogs_set), ElementsAre(4096, -32668));
    EXPECT_THAT(found.numbers(analogs_set, "Offsets"), ElementsAre(32768));
}

TEST(ReadAnalogs, IntegersAroundAnUnsignedMiddleAreUnsignedWithoutAFormat) {
    auto file = one_channel({32760, 32776});
    file.storage = sample_storage::integer;
    file.more_parameters = [](parameter_writer& writer) {
        writer.words(trial::analog, "OFFSET", {32768}, {1}).words(trial::analog, "BITS", {16});
    };
    const auto found = c3d_test::read(file.bytes());
    EXPECT_THAT(found.values(analogs_set), ElementsAre(-8, 8));
    EXPECT_TRUE(found.warns_about("ANALOG:OFFSET of channel 1 is -32768"));
}

TEST(ReadAnalogs, RealsAroundAnUnsignedMiddleHaveAnUnsignedOffset) {
    auto file = one_channel({32760, 32776});
    file.more_parameters = [](parameter_writer& writer) {
        writer.words(trial::analog, "OFFSET", {32768}, {1});
    };
    EXPECT_THAT(c3d_test::read(file.bytes()).values(analogs_set), ElementsAre(-8, 8));
}

TEST(ReadAnalogs, MissingScalesAreOneAndMissingOffsetsZero) {
    const auto found = c3d_test::read(two_channels().bytes());
    EXPECT_THAT(found.numbers(analogs_set, "Scales"), ElementsAre(1, 1));
    EXPECT_THAT(found.numbers(analogs_set, "Offsets"), ElementsAre(0, 0));
}

TEST(ReadAnalogs, ScaleOfZeroStaysAndIsNoted) {
    auto file = one_channel({5, 6});
    file.more_parameters = [](parameter_writer& writer) {
        writer.reals(trial::analog, "SCALE", {0}, {1});
    };
    const auto found = c3d_test::read(file.bytes());
    EXPECT_THAT(found.values(analogs_set), ElementsAre(0, 0));
    EXPECT_TRUE(found.warns_about("the scale of an analog channel is 0"));
}

TEST(ReadAnalogs, GainCodesThatNobodyKnowsAreZero) {
    auto file = two_channels();
    file.analog_labels = {"A", "B", "C", "D"};
    file.samples_per_frame = 1;
    file.more_parameters = [](parameter_writer& writer) {
        writer.words(trial::analog, "GAIN", {5, 6, -1, 2}, {4});
    };
    const auto found = c3d_test::read(file.bytes());
    EXPECT_THAT(found.numbers(analogs_set, "Gain"), ElementsAre(5, 0, 0, 2));
    EXPECT_EQ(found.attribute(analogs_set, "Gain").type(), strata::data_type::int32);
    EXPECT_THAT(found.numbers("Format/Metadata/ANALOG", "GAIN"), ElementsAre(5, 6, -1, 2));
}

TEST(ReadAnalogs, WithoutAGroupTheHeaderServes) {
    auto file = two_channels();
    file.left_out = {"ANALOG", "ANALOG:USED", "ANALOG:RATE", "ANALOG:LABELS"};
    const auto found = c3d_test::read(file.bytes());
    EXPECT_THAT(found.values(analogs_set), ElementsAre(1, 2, 3, 4, 10, 20, 30, 40));
    EXPECT_THAT(found.texts(analogs_set, "SetNames"), ElementsAre("unamed_0", "unamed_1"));
    EXPECT_THAT(found.numbers(analogs_set, "SampleRate"), ElementsAre(200.0));
}

TEST(ReadAnalogs, WithoutChannelsThereIsATimeBase) {
    const auto found = c3d_test::read(trial().bytes());
    EXPECT_THAT(found.shape(analogs_set), ElementsAre(1, 0, 2));
    EXPECT_THAT(found.numbers(analogs_set, "NumSamples"), ElementsAre(2));
    EXPECT_THAT(found.numbers(analogs_set, "SampleRate"), ElementsAre(100.0));
}

TEST(ReadAnalogs, WithoutPointsTheChannelsAreThere) {
    auto file = two_channels();
    file.labels.clear();
    file.left_out = {"POINT:LABELS"};
    const auto found = c3d_test::read(file.bytes());
    ASSERT_TRUE(found.status) << found.status.message(" ");
    EXPECT_THAT(found.values(analogs_set), ElementsAre(1, 2, 3, 4, 10, 20, 30, 40));
    EXPECT_THAT(found.shape(c3d_test::points_set), ElementsAre(3, 0, 2));
}

TEST(ReadAnalogs, MoreThan255HaveTheirScales) {
    trial file;
    file.samples = {{1, 2, 3, 0}};
    std::vector<std::string> labels;
    std::vector<float> scales;
    for (int i = 0; i < 300; ++i) {
        labels.push_back(fmt::format("A{}", i));
        scales.push_back(static_cast<float>(i));
    }
    file.analog_labels = labels;
    file.analogs.assign(300, 1.0F);
    file.left_out = {"ANALOG:LABELS"};
    file.more_parameters = [&](parameter_writer& writer) {
        writer.texts(trial::analog, "LABELS", {labels.begin(), labels.begin() + 255}, 4);
        writer.texts(trial::analog, "LABELS2", {labels.begin() + 255, labels.end()}, 4);
        writer.reals(trial::analog, "SCALE", {scales.begin(), scales.begin() + 255}, {255});
        writer.reals(trial::analog, "SCALE2", {scales.begin() + 255, scales.end()}, {45});
    };
    const auto found = c3d_test::read(file.bytes());
    EXPECT_EQ(found.texts(analogs_set, "Labels"), labels);
    EXPECT_EQ(found.values(analogs_set).back(), 299.0);
    EXPECT_EQ(found.values(analogs_set)[255], 255.0);
}

} // namespace
