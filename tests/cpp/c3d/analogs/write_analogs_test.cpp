// How the values of analog channels become what a file holds.

#include <cmath>
#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "schema/write_attribute.hpp"
#include "tests/cpp/c3d/support/trial.hpp"
#include "tests/cpp/c3d/support/writing.hpp"

namespace {

using c3d_test::analogs_set;
using c3d_test::change_number;
using c3d_test::new_acquisition;
using c3d_test::opened;
using c3d_test::parameter_writer;
using c3d_test::reading;
using c3d_test::trial;
using c3d_test::write;
using testing::ElementsAre;

constexpr auto analog_parameters = "Format/Metadata/ANALOG";

trial one_channel(std::function<void(parameter_writer&)> more) {
    trial file;
    file.labels = {};
    file.samples = {};
    file.analog_labels = {"C"};
    file.analogs = {100, 110, 0.5F};
    file.more_parameters = std::move(more);
    return file;
}

strata::data_set channel_of(const strata::data_store& store, const std::string& name = "C") {
    return store.root().retrieve_set("Format/Data/AnalogsExport/" + name);
}

TEST(WriteAnalogs, ScaleAndOffsetOfTheChannelAreThoseOfTheFile) {
    new_acquisition made(1, 50.0, 2);
    auto channel = made.add_analog("C", {1.0, -2.0});
    change_number(channel, "Scale", 0.5);
    change_number(channel, "Offset", -10.0);
    const auto found = opened(write(made.store).bytes);
    EXPECT_THAT(found.values(analogs_set), ElementsAre(1.0, -2.0));
    EXPECT_THAT(found.numbers(analog_parameters, "SCALE"), ElementsAre(0.5));
    EXPECT_THAT(found.numbers(analog_parameters, "OFFSET"), ElementsAre(-10));
}

TEST(WriteAnalogs, AnotherScaleChangesNoValue) {
    const auto found = opened(one_channel([](auto& writer) {
                                  writer.reals(trial::analog, "SCALE", {0.25F}, {1});
                                  writer.reals(trial::analog, "GEN_SCALE", {2.0F});
                              }).bytes());
    change_number(channel_of(found.store), "Scale", 4.0);
    const auto again = opened(write(found.store).bytes);
    EXPECT_THAT(again.values(analogs_set), ElementsAre(50.0, 55.0, 0.25));
    EXPECT_THAT(again.numbers(analog_parameters, "SCALE"), ElementsAre(4.0));
    EXPECT_THAT(again.numbers(analog_parameters, "GEN_SCALE"), ElementsAre(2.0));
}

TEST(WriteAnalogs, ScaleThatLosesTheValuesIsWrittenAsOne) {
    for (double scale :
         {0.0, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        new_acquisition made(1, 50.0, 2);
        change_number(made.add_analog("C", {1.5, -2.0}), "Scale", scale);
        const auto written = write(made.store);
        const auto found = opened(written.bytes);
        EXPECT_THAT(found.values(analogs_set), ElementsAre(1.5, -2.0)) << scale;
        EXPECT_THAT(found.numbers(analog_parameters, "SCALE"), ElementsAre(1.0)) << scale;
        EXPECT_TRUE(written.warns_about("the scale of the analog channel 'C' is ")) << scale;
    }
}

TEST(WriteAnalogs, ScaleOfZeroThatWasReadStays) {
    const auto found = opened(one_channel([](auto& writer) {
                                  writer.reals(trial::analog, "SCALE", {0.0F}, {1});
                              }).bytes());
    const auto written = write(found.store);
    const auto again = opened(written.bytes);
    EXPECT_THAT(again.numbers(analog_parameters, "SCALE"), ElementsAre(0.0));
    const auto data = written.bytes.size() - 512;
    EXPECT_EQ(written.part(data, 12), c3d_test::hex("00 00 C8 42 00 00 DC 42 00 00 00 3F"));
}

TEST(WriteAnalogs, GeneralScaleOfZeroIsWrittenAsOneWhenAValueNeedsIt) {
    const auto found = opened(one_channel([](auto& writer) {
                                  writer.reals(trial::analog, "GEN_SCALE", {0.0F});
                              }).bytes());
    auto channel = channel_of(found.store);
    const auto shape = channel.shape(false);
    const std::vector<double> values = {1.0, 2.0, 3.0};
    ASSERT_TRUE(
        channel.select(shape, false).write_value(values.data(), strata::data_type::float64));
    const auto again = opened(write(found.store).bytes);
    EXPECT_THAT(again.values(analogs_set), ElementsAre(1.0, 2.0, 3.0));
    EXPECT_THAT(again.numbers(analog_parameters, "GEN_SCALE"), ElementsAre(1.0));
}

TEST(WriteAnalogs, ValuesBeyondRealsGetALargerScale) {
    new_acquisition made(1, 50.0, 2);
    made.add_analog("C", {3.2e40, -1.0e40});
    const auto written = write(made.store);
    const auto found = opened(written.bytes);
    const auto values = found.values(analogs_set);
    EXPECT_NEAR(values[0] / 3.2e40, 1.0, 1e-6);
    EXPECT_NEAR(values[1] / -1.0e40, 1.0, 1e-6);
    EXPECT_TRUE(written.warns_about("too large for its scale 1"));
}

TEST(WriteAnalogs, OffsetThatNoWordHoldsGoesIntoTheSamples) {
    for (double offset : {0.5, 70000.0, -40000.0}) {
        new_acquisition made(1, 50.0, 2);
        change_number(made.add_analog("C", {1.0, -2.0}), "Offset", offset);
        const auto written = write(made.store);
        const auto found = opened(written.bytes);
        EXPECT_THAT(found.values(analogs_set), ElementsAre(1.0, -2.0)) << offset;
        EXPECT_THAT(found.numbers(analog_parameters, "OFFSET"), ElementsAre(0)) << offset;
        EXPECT_TRUE(written.warns_about("which ANALOG:OFFSET cannot hold; it is written as 0"));
    }
}

TEST(WriteAnalogs, RealOffsetsOfAFileStayReal) {
    const auto found = opened(one_channel([](auto& writer) {
                                  writer.reals(trial::analog, "OFFSET", {0.25F}, {1});
                              }).bytes());
    change_number(channel_of(found.store), "Offset", 200.5);
    const auto again = opened(write(found.store).bytes);
    EXPECT_THAT(again.numbers(analog_parameters, "OFFSET"), ElementsAre(200.5));
    EXPECT_THAT(again.values(analogs_set), ElementsAre(99.75, 109.75, 0.25));
}

TEST(WriteAnalogs, OffsetsOfUnsignedWordsAreReadAgain) {
    auto file = one_channel([](auto& writer) {
        writer.words(trial::analog, "OFFSET", {-28672}, {1}); // 36,864
        writer.text(trial::analog, "FORMAT", "UNSIGNED");
    });
    file.storage = c3d::sample_storage::integer;
    file.analogs = {-28672, -28670, 100};
    const auto found = opened(file.bytes());
    EXPECT_THAT(found.values(analogs_set), ElementsAre(0.0, 2.0, 100.0 - 36864.0));
    const auto again = opened(write(found.store).bytes);
    EXPECT_THAT(again.values(analogs_set), ElementsAre(0.0, 2.0, 100.0 - 36864.0));
    EXPECT_THAT(again.numbers(analog_parameters, "OFFSET"), ElementsAre(-28672));
}

TEST(WriteAnalogs, GainCodesThatMeanNothingStay) {
    const auto found = opened(
        one_channel([](auto& writer) { writer.words(trial::analog, "GAIN", {77}, {1}); }).bytes());
    auto label = channel_of(found.store).retrieve_attribute("Label");
    label.write("renamed");
    const auto again = opened(write(found.store).bytes);
    EXPECT_THAT(again.numbers(analog_parameters, "GAIN"), ElementsAre(77));
    EXPECT_THAT(again.texts(analog_parameters, "LABELS"), ElementsAre("renamed"));
}

TEST(WriteAnalogs, AreCountedByTheirRatio) {
    new_acquisition made(3, 50.0, 4);
    made.add_analog("A", std::vector<double>(12, 1.0));
    made.add_analog("B", {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11});
    const auto found = opened(write(made.store).bytes);
    EXPECT_THAT(found.numbers("Format/Header", "NumberAnalogSamplesPerPointSample"),
                ElementsAre(4));
    EXPECT_THAT(found.numbers(analog_parameters, "RATE"), ElementsAre(200.0));
    EXPECT_THAT(found.row(analogs_set, 0, 1), ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11));
}

} // namespace
