#include <cmath>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cpp/c3d/support/trial.hpp"
#include "tests/cpp/c3d/support/writing.hpp"

namespace {

using c3d_test::byte_vector;
using c3d_test::intel;
using c3d_test::opened;
using c3d_test::parameter_writer;
using c3d_test::trial;
using c3d_test::write;
using testing::ElementsAre;

constexpr auto rotations_set = "Format/Data/Rotations";
constexpr int rotation_group = 9;

/// One row of one segment: elements `first`, `first` + 1 and so on, reliability 1.
byte_vector row_from(float first) {
    byte_vector bytes;
    for (int i = 0; i < 16; ++i)
        c3d_test::append(bytes, c3d_test::real(intel, first + static_cast<float>(i)));
    c3d_test::append(bytes, c3d_test::real(intel, 1.0F));
    return bytes;
}

/// Two frames of a point and of a segment, whose section begins in block `block` of the file.
trial with_rotations(int block) {
    trial file;
    file.more_parameters = [=](parameter_writer& writer) {
        writer.group(rotation_group, "ROTATION").words(rotation_group, "USED", {1});
        writer.texts(rotation_group, "LABELS", {"Pelvis"}, 8).words(rotation_group, "RATIO", {1});
        writer.words(rotation_group, "DATA_START", {block});
    };
    return file;
}

byte_vector section() {
    byte_vector bytes;
    c3d_test::append(bytes, row_from(0.0F));
    c3d_test::append(bytes, row_from(100.0F));
    c3d_test::pad_block(bytes);
    return bytes;
}

byte_vector file_with_rotations() {
    auto bytes = with_rotations(4).bytes();
    EXPECT_EQ(bytes.size(), 3 * 512U);
    c3d_test::append(bytes, section());
    return bytes;
}

TEST(WriteRotations, ComeBehindTheSamples) {
    const auto written = write(opened(file_with_rotations()).store);
    ASSERT_TRUE(written.status) << written.status.message("");
    const auto begin = written.bytes.size() - 512;
    EXPECT_EQ(written.part(begin, 512), section());
    const auto found = opened(written.bytes);
    EXPECT_THAT(found.numbers("Format/Metadata/ROTATION", "DATA_START"),
                ElementsAre(static_cast<double>(begin / 512 + 1)));
    EXPECT_THAT(found.texts(rotations_set, "Labels"), ElementsAre("Pelvis"));
}

TEST(WriteRotations, FollowTheFrames) {
    const auto found = opened(file_with_rotations());
    for (const auto* name : {"Markers", "Angles", "Forces", "Moments", "Powers"}) {
        auto group = found.store.root().retrieve_group(std::string("Format/Data/") + name);
        const double frames = 3.0;
        ASSERT_TRUE(group.retrieve_attribute("NumSamples")
                        .write_value(&frames, strata::data_type::float64));
    }
    auto point = found.store.root().retrieve_set("Format/Data/Markers/LASI");
    const std::array<std::uint64_t, 3> extent = {3, 1, 3};
    point.resize(extent.data(), extent.size());
    const double rows = 3.0;
    ASSERT_TRUE(found.store.root()
                    .retrieve_set(rotations_set)
                    .retrieve_attribute("NumSamples")
                    .write_value(&rows, strata::data_type::float64));
    const auto again = opened(write(found.store).bytes);
    EXPECT_THAT(again.shape(rotations_set), ElementsAre(17, 1, 3));
    EXPECT_THAT(again.row(rotations_set, 16, 0), ElementsAre(1, 1, -1));
    EXPECT_TRUE(std::isnan(again.row(rotations_set, 0, 0).at(2)));
    EXPECT_EQ(again.row(rotations_set, 3, 0).at(1), 103.0);
}

TEST(WriteRotations, ThatTheFileLacksAreNotMadeUp) {
    auto bytes = file_with_rotations();
    bytes.resize(3 * 512 + 68); // the first row
    const auto written = write(opened(bytes).store);
    ASSERT_TRUE(written.status) << written.status.message("");
    // A reader would take the padding of a block for the second row.
    EXPECT_EQ(written.bytes.size() % 512, 68U);
    EXPECT_EQ(written.part(written.bytes.size() - 68, 68), row_from(0.0F));
    EXPECT_THAT(opened(written.bytes).shape(rotations_set), ElementsAre(17, 1, 1));
}

TEST(WriteRotations, ThatAreNotThereAreNotAnnounced) {
    const auto found = opened(with_rotations(4).bytes());
    const auto again = opened(write(found.store).bytes);
    EXPECT_THAT(again.numbers("Format/Metadata/ROTATION", "USED"), ElementsAre(0));
}

TEST(WriteRotations, BeforeTheSamplesAreRead) {
    auto file = with_rotations(3);
    file.header_words = {{9, 4}};
    file.left_out = {"POINT:DATA_START"};
    const auto more = file.more_parameters;
    file.more_parameters = [=](parameter_writer& writer) {
        more(writer);
        writer.words(trial::point, "DATA_START", {4});
    };
    auto bytes = file.bytes();
    ASSERT_EQ(bytes.size(), 3 * 512U);
    const auto between = section();
    bytes.insert(bytes.begin() + 1024, between.begin(), between.end());
    const auto found = c3d_test::read(bytes);
    ASSERT_TRUE(found.status) << found.status.message("");
    EXPECT_THAT(found.warnings, testing::IsEmpty());
    EXPECT_THAT(found.row(rotations_set, 2, 0), ElementsAre(2, 102));
    EXPECT_THAT(found.row(c3d_test::points_set, 0, 0), ElementsAre(1, 4));
}

} // namespace
