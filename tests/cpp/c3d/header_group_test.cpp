#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cpp/c3d/support/reading.hpp"
#include "tests/cpp/c3d/support/trial.hpp"

namespace {

using c3d_test::parameter_writer;
using c3d_test::trial;
using testing::ElementsAre;
using testing::SizeIs;

constexpr auto header = "Format/Header";
constexpr auto groups = "Format/Header/Groups";
constexpr auto parameter_records = "Format/Header/Parameters";

TEST(HeaderGroup, CountersAreThoseThatWereRead) {
    trial file;
    file.analog_labels = {"A", "B", "C"};
    file.samples_per_frame = 2;
    file.analogs.assign(12, 0.0F);
    file.header_words = {{6, 10}};
    const auto found = c3d_test::read(file.bytes());
    EXPECT_THAT(found.numbers(header, "NumberAnalogSamplesPerPointSample"), ElementsAre(2));
    EXPECT_THAT(found.numbers(header, "TotalAnalogSamplesPer3dSample"), ElementsAre(6));
    EXPECT_THAT(found.numbers(header, "PointMaximumInterpolationGap"), ElementsAre(10));
    EXPECT_EQ(found.attribute(header, "PointMaximumInterpolationGap").type(),
              strata::data_type::int32);
}

TEST(HeaderGroup, StorageOfTheFileIsKept) {
    trial file;
    file.format = c3d::number_format::mips;
    file.storage = c3d::sample_storage::integer;
    file.first_frame = 33;
    const auto found = c3d_test::read(file.bytes());
    EXPECT_THAT(found.numbers(header, "Processor"), ElementsAre(86));
    EXPECT_THAT(found.texts(header, "Storage"), ElementsAre("integer"));
    EXPECT_THAT(found.numbers(header, "PointScale"), ElementsAre(double{0.1F}));
    EXPECT_THAT(found.numbers(header, "FirstFrame"), ElementsAre(33));
    EXPECT_THAT(found.numbers(header, "LastFrame"), ElementsAre(34));
    EXPECT_THAT(found.numbers(header, "SectionHead"), ElementsAre(1, 80, 1, 86));
}

TEST(HeaderGroup, EventsOfTheHeaderAreKept) {
    auto bytes = trial().bytes();
    bytes[300] = std::byte{1};
    const auto time = c3d_test::real(c3d::number_format::intel, 0.5F);
    std::copy(time.begin(), time.end(), bytes.begin() + 304);
    bytes[376] = std::byte{1};
    const auto label = c3d_test::characters("RHS ");
    std::copy(label.begin(), label.end(), bytes.begin() + 396);
    const auto found = c3d_test::read(bytes);
    EXPECT_THAT(found.numbers(header, "EventTimes"), ElementsAre(0.5));
    EXPECT_THAT(found.texts(header, "EventLabels"), ElementsAre("RHS"));
    EXPECT_THAT(found.numbers(header, "EventStatuses"), ElementsAre(1));
}

TEST(HeaderGroup, BlockIsKeptWhereItHoldsMoreThanIsKnown) {
    auto bytes = trial().bytes();
    EXPECT_FALSE(c3d_test::read(bytes).attribute(header, "Block"));
    bytes[480] = std::byte{7};
    const auto found = c3d_test::read(bytes);
    EXPECT_THAT(found.numbers(header, "Block"), SizeIs(512));
    EXPECT_EQ(found.numbers(header, "Block")[480], 7.0);
}

TEST(HeaderGroup, RecordsOfGroupsAreKept) {
    trial file;
    file.more_parameters = [](parameter_writer& writer) {
        writer.group(9, "-Own/Group", "what it is").words(9, "X", {1});
    };
    const auto found = c3d_test::read(file.bytes());
    EXPECT_THAT(found.texts(groups, "Name"), ElementsAre("POINT", "ANALOG", "Own/Group"));
    EXPECT_THAT(found.texts(groups, "Stored"), ElementsAre("POINT", "ANALOG", "Own_Group"));
    EXPECT_THAT(found.numbers(groups, "Id"), ElementsAre(1, 2, 9));
    EXPECT_THAT(found.numbers(groups, "Locked"), ElementsAre(0, 0, 1));
    EXPECT_THAT(found.texts(groups, "Description"), ElementsAre("", "", "what it is"));
}

TEST(HeaderGroup, RecordsOfParametersAreKept) {
    trial file;
    file.left_out = {"POINT:USED",       "POINT:SCALE",  "POINT:RATE",
                     "POINT:DATA_START", "POINT:FRAMES", "ANALOG",
                     "POINT:LABELS",     "ANALOG:USED",  "ANALOG:RATE"};
    file.more_parameters = [](parameter_writer& writer) {
        writer.texts(1, "-Labels", {"A"}, 12).bytes(1, "B", {1});
        writer.record(1, "C", 4, {}, c3d_test::hex("00 00 80 3F"), "ratio");
        writer.record(1, "D", -1, {}, c3d_test::hex("41"));
    };
    const auto found = c3d_test::read(file.bytes());
    EXPECT_THAT(found.numbers(parameter_records, "Group"), ElementsAre(0, 0, 0, 0));
    EXPECT_THAT(found.texts(parameter_records, "Name"), ElementsAre("Labels", "B", "C", "D"));
    EXPECT_THAT(found.texts(parameter_records, "Stored"), ElementsAre("LABELS", "B", "C", "D"));
    EXPECT_THAT(found.numbers(parameter_records, "Type"), ElementsAre(-1, 1, 4, -1));
    EXPECT_THAT(found.numbers(parameter_records, "Width"), ElementsAre(12, 0, 0, -1));
    EXPECT_THAT(found.numbers(parameter_records, "Encoding"), ElementsAre(0, 0, 0, 0));
    EXPECT_THAT(found.numbers(parameter_records, "Locked"), ElementsAre(1, 0, 0, 0));
    EXPECT_THAT(found.texts(parameter_records, "Description"), ElementsAre("", "", "ratio", ""));
}

TEST(HeaderGroup, ReplacedParametersHaveNoRecord) {
    trial file;
    file.more_parameters = [](parameter_writer& writer) {
        writer.group(9, "OWN").words(9, "X", {1}).words(9, "X", {2});
    };
    const auto found = c3d_test::read(file.bytes());
    const auto names = found.texts(parameter_records, "Name");
    EXPECT_EQ(std::count(names.begin(), names.end(), "X"), 1);
}

} // namespace
