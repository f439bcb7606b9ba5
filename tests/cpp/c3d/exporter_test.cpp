#include "plugins/c3d/exporter.hpp"

#include <cmath>
#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "schema/split_record.hpp"
#include "schema/write_attribute.hpp"
#include "tests/cpp/c3d/support/trial.hpp"
#include "tests/cpp/c3d/support/writing.hpp"

namespace {

using c3d_test::filling_device;
using c3d_test::hex;
using c3d_test::new_acquisition;
using c3d_test::opened;
using c3d_test::trial;
using c3d_test::write;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto quiet_nan = std::numeric_limits<double>::quiet_NaN();

trial small_trial() {
    trial file;
    file.samples = {{100.5F, -20.25F, 950.0F, 773.0F}, {0, 0, 0, -1}};
    file.analog_labels = {"EM01"};
    file.samples_per_frame = 2;
    file.analogs = {2048, 2148, 2048, 1848};
    file.more_parameters = [](auto& writer) {
        writer.reals(trial::analog, "SCALE", {0.005F}, {1});
        writer.words(trial::analog, "OFFSET", {2048}, {1});
    };
    return file;
}

std::size_t data_offset(const c3d_test::writing& written) {
    const auto low = std::to_integer<std::size_t>(written.bytes.at(16));
    return (low - 1) * 512;
}

TEST(Exporter, WritesTheHeader) {
    const auto written = write(opened(small_trial().bytes()).store);
    ASSERT_TRUE(written.status) << written.status.message("\n");
    EXPECT_EQ(written.part(0, 16), hex("02 50 01 00 02 00 01 00 02 00 00 00 CD CC CC BD"));
    EXPECT_EQ(written.part(18, 6), hex("02 00 00 00 C8 42"));
    EXPECT_EQ(written.part(298, 4), hex("39 30 00 00"));
}

TEST(Exporter, RefusesChannelsOfTheFileThatWereNotSplit) {
    const auto found = opened(small_trial().bytes());
    auto points = found.store.root().retrieve_set("Format/Data/Points");
    schema::record_split(points, 0);
    filling_device device;
    const auto written = write(found.store, device);
    EXPECT_EQ(written.status.message("\n"),
              "1 point of the file that was read would be lost: they did not become channels of "
              "the acquisition, as the log says; where the plugin 'data_modifier' is missing, put "
              "it back, call reload and read the file again");
    EXPECT_EQ(device.calls, 0);
    schema::record_split(points, 1);
    EXPECT_TRUE(write(found.store).status);
}

TEST(Exporter, WritesSamplesAsTheyWereRead) {
    const auto written = write(opened(small_trial().bytes()).store);
    const auto data = data_offset(written);
    EXPECT_EQ(written.part(data, 48),
              hex("00 00 C9 42 00 00 A2 C1 00 80 6D 44 00 40 41 44 | 00 00 00 45 00 40 06 45"
                  "00 00 00 00 00 00 00 00 00 00 00 00 00 00 80 BF | 00 00 00 45 00 00 E7 44"));
    EXPECT_EQ(written.bytes.size(), data + 512);
    EXPECT_THAT(written.warnings, IsEmpty());
}

TEST(Exporter, WritesIntegerSamplesAsReals) {
    auto file = small_trial();
    file.storage = c3d::sample_storage::integer;
    file.scale = 0.5F;
    file.samples = {{10, -20, 31, 773}, {0, 0, 0, -1}};
    const auto written = write(opened(file.bytes()).store);
    const auto data = data_offset(written);
    EXPECT_EQ(written.part(12, 4), hex("00 00 00 BF"));
    EXPECT_EQ(written.part(data, 24), hex("00 00 A0 40 00 00 20 C1 00 00 78 41 00 40 41 44"
                                          "00 00 00 45 00 40 06 45"));
}

TEST(Exporter, WritesTheSameFileAgain) {
    const auto once = write(opened(small_trial().bytes()).store);
    const auto twice = write(opened(once.bytes).store);
    EXPECT_EQ(once.bytes, twice.bytes);
}

TEST(Exporter, KeepsReservedBytesOfTheHeader) {
    auto file = small_trial();
    file.header_words = {{13, 0x4142}, {148, 12345}, {149, 9}, {256, 0x4344}};
    const auto written = write(opened(file.bytes()).store);
    EXPECT_EQ(written.part(24, 2), hex("42 41"));
    EXPECT_EQ(written.part(510, 2), hex("44 43"));
    EXPECT_EQ(written.part(294, 4), hex("00 00 00 00")); // the section they lead to is not there
}

TEST(Exporter, ScaleOfNewPointsFitsIntegers) {
    new_acquisition made(2, 50.0);
    made.add_point("Markers", "A", {1, 2, 3, -3200.0, quiet_nan, 6});
    const auto found = opened(write(made.store).bytes);
    EXPECT_THAT(found.numbers("Format/Metadata/POINT", "SCALE"),
                ElementsAre(double{-3200.0F / 32000.0F}));
}

TEST(Exporter, AnyCoordinateThatIsNoNumberMakesASampleInvalid) {
    new_acquisition made(2, 50.0);
    made.add_point("Markers", "A", {1, 2, 3, 4, quiet_nan, 6});
    const auto found = opened(write(made.store).bytes);
    EXPECT_THAT(found.numbers("Format/Data/Points", "Residuals"), ElementsAre(0.0, -1.0));
    EXPECT_TRUE(std::isnan(found.values("Format/Data/Points").at(1)));
}

TEST(Exporter, NewAcquisitionsBeginWithTheGroupsThatEveryReaderExpects) {
    new_acquisition made(1, 50.0);
    auto mine = made.group("Format/Metadata").create_group("MINE");
    schema::write_number(mine, "X", std::int16_t{7});
    const auto found = opened(write(made.store).bytes);
    EXPECT_THAT(found.store.root().retrieve_group("Format/Metadata").list_group_children_name(),
                ElementsAre("POINT", "ANALOG", "FORCE_PLATFORM", "MINE", "TRIAL"));
    EXPECT_THAT(found.texts("Format/Header/Parameters", "Name"),
                ElementsAre("USED", "SCALE", "RATE", "DATA_START", "FRAMES", "LABELS",
                            "DESCRIPTIONS", "UNITS", "USED", "FORMAT", "BITS", "USED", "X",
                            "ACTUAL_START_FIELD", "ACTUAL_END_FIELD"));
    EXPECT_THAT(found.numbers("Format/Header/Parameters", "Locked"),
                ElementsAre(1, 1, 1, 1, 1, 0, 0, 0, 1, 1, 1, 0, 0, 0, 0));
}

TEST(Exporter, MoreThan255PointsContinueTheirLists) {
    new_acquisition made(1, 50.0);
    for (int i = 0; i < 257; ++i)
        made.add_point("Markers", "P" + std::to_string(i), {1, 2, 3});
    const auto found = opened(write(made.store).bytes);
    EXPECT_EQ(found.texts("Format/Metadata/POINT", "LABELS").size(), 255U);
    EXPECT_THAT(found.texts("Format/Metadata/POINT", "LABELS2"), ElementsAre("P255", "P256"));
    EXPECT_EQ(found.texts("Format/Data/Points", "Labels").at(256), "P256");
}

TEST(Exporter, TextsLosePaddingWhereTheParametersWouldNotFit) {
    auto file = small_trial();
    file.more_parameters = [](auto& writer) {
        writer.group(9, "WIDE");
        for (int i = 0; i < 2; ++i)
            writer.texts(9, "TEXTS" + std::to_string(i), std::vector<std::string>(255, "x"), 255);
    };
    const auto found = opened(file.bytes());
    auto wide = found.store.root().retrieve_group("Format/Metadata/WIDE");
    schema::write_texts(wide, "MORE", std::vector<std::string>(255, "a text of some length"));
    const auto written = write(found.store);
    ASSERT_TRUE(written.status) << written.status.message("");
    EXPECT_TRUE(written.warns_about("texts are written without padding"));
    EXPECT_EQ(opened(written.bytes).texts("Format/Metadata/WIDE", "TEXTS1"),
              std::vector<std::string>(255, "x"));
}

TEST(Exporter, GapBeyondAWordIsRefused) {
    new_acquisition made(1, 50.0);
    auto header = made.group("Format/Header");
    schema::write_number(header, "PointMaximumInterpolationGap", std::int32_t{65536});
    const auto written = write(made.store);
    EXPECT_EQ(written.status.message(""),
              "the maximum interpolation gap is 65536 frames; a C3D file holds 0 to 65535");
    EXPECT_THAT(written.bytes, IsEmpty());
}

TEST(Exporter, RatesThatNoRealHoldsAreRefused) {
    EXPECT_EQ(write(new_acquisition(1, 1e39).store).status.message(""),
              "POINT:RATE is 1e+39 Hz, which no real of a C3D file holds");
    EXPECT_EQ(write(new_acquisition(1, 1e-50).store).status.message(""),
              "POINT:RATE is 1e-50 Hz, which no real of a C3D file holds");
}

TEST(Exporter, AnalogRateIsThatOfThePointsAsItIsStored) {
    new_acquisition made(1, 59.94, 5);
    made.add_analog("A", std::vector<double>(5));
    const auto found = opened(write(made.store).bytes);
    EXPECT_THAT(found.numbers("Format/Metadata/ANALOG", "RATE"),
                ElementsAre(double{static_cast<float>(5.0 * double{59.94F})}));
}

TEST(Exporter, FilesWithoutChannelsMayHaveNoSamplesOfThem) {
    auto file = small_trial();
    file.analog_labels = {};
    file.analogs = {};
    file.samples_per_frame = 0;
    file.more_parameters = nullptr;
    const auto written = write(opened(file.bytes()).store);
    ASSERT_TRUE(written.status) << written.status.message("");
    EXPECT_EQ(written.part(18, 2), hex("00 00"));
    EXPECT_THAT(opened(written.bytes).numbers("Format/Metadata/ANALOG", "RATE"), ElementsAre(0.0));
}

TEST(Exporter, TooManyAnalogValuesInAFrameAreRefused) {
    new_acquisition made(1, 50.0, 40000);
    made.add_analog("A", std::vector<double>(40000));
    made.add_analog("B", std::vector<double>(40000));
    EXPECT_EQ(write(made.store).status.message(""),
              "2 analog channels with 40000 samples a frame are 80000 values a frame; a C3D file "
              "holds 65535");
}

TEST(Exporter, LabelsAreNeverCut) {
    new_acquisition made(1, 50.0);
    auto point = made.add_point("Markers", "A", {1, 2, 3});
    const std::string label(256, 'x');
    point.retrieve_attribute("Label").write(label.c_str());
    EXPECT_EQ(write(made.store).status.message(""),
              "the parameter POINT:LABELS has a text of 256 bytes; a C3D file holds 255: '" +
                  label + "'");
}

TEST(Exporter, ChannelsOfAnotherLengthAreRefused) {
    new_acquisition made(2, 50.0, 2);
    made.add_analog("A", {1, 2, 3});
    EXPECT_EQ(write(made.store).status.message(""),
              "the channel 'A' does not hold 4 samples of 1 real components each");
}

TEST(Exporter, NamesThatDifferInCaseOnlyAreRefused) {
    new_acquisition made(1, 50.0);
    made.group("Format/Metadata").create_group("analog");
    EXPECT_EQ(write(made.store).status.message(""),
              "the metadata groups 'ANALOG' and 'analog' would be one in a C3D file, which does "
              "not tell upper from lower case");
}

TEST(Exporter, DeviceThatIsFullIsNamedWithTheByte) {
    const auto acquisition = opened(small_trial().bytes());
    const auto whole = write(acquisition.store).bytes.size();
    for (std::uint64_t room : {std::uint64_t{0}, std::uint64_t{700}, std::uint64_t{whole - 1}}) {
        filling_device device;
        device.room = room;
        const auto text = write(acquisition.store, device).status.message("");
        EXPECT_THAT(text, testing::HasSubstr(" taken: No space left on device")) << room;
        EXPECT_EQ(text.substr(0, 5), "byte ") << room;
        EXPECT_EQ(device.bytes.size(), room);
    }
}

TEST(Exporter, WritesLargeBlocks) {
    new_acquisition made(40000, 50.0);
    made.add_point("Markers", "A", std::vector<double>(120000, 1.0));
    filling_device device;
    const auto written = write(made.store, device);
    ASSERT_TRUE(written.status);
    EXPECT_LE(device.calls, 2U + 40000U * 16U / (256U * 1024U) + 1U);
}

TEST(Exporter, NeedsAnAcquisition) {
    EXPECT_EQ(write(strata::data_store()).status.message(""),
              "there is no group 'Format', which holds an acquisition");
}

} // namespace
