#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cpp/c3d/support/reading.hpp"
#include "tests/cpp/c3d/support/trial.hpp"

namespace {

using c3d_test::byte_vector;
using c3d_test::memory_device;
using c3d_test::parameter_writer;
using c3d_test::points_set;
using c3d_test::trial;
using testing::ElementsAre;

trial ten_frames() {
    trial file;
    file.samples.assign(10, {1, 2, 3, 0});
    return file;
}

TEST(CutFiles, GiveTheFramesThatAreThere) {
    auto bytes = ten_frames().bytes();
    bytes.resize(1024 + 7 * 16 + 5);
    const auto found = c3d_test::read(bytes);
    ASSERT_TRUE(found.status);
    EXPECT_THAT(found.shape(points_set), ElementsAre(3, 1, 7));
    EXPECT_THAT(found.numbers(points_set, "NumSamples"), ElementsAre(7));
    EXPECT_TRUE(found.warns_about("POINT:FRAMES says 10 frames, the file holds 7; these are read"));
}

TEST(CutFiles, WithoutAFrameSayWhatWasExpectedWhere) {
    auto bytes = ten_frames().bytes();
    bytes.resize(1024 + 15);
    EXPECT_EQ(
        c3d_test::read(bytes).status.message(""),
        "'trial.c3d': byte 1024: 10 frames of 16 bytes (1 points, 0 × 1 analog samples) expected "
        "(POINT:FRAMES says so), found 15 bytes");
}

TEST(CutFiles, WithoutParametersSayWhereTheyShouldBe) {
    auto bytes = ten_frames().bytes();
    bytes.resize(515);
    EXPECT_EQ(
        c3d_test::read(bytes).status.message(""),
        "'trial.c3d': byte 0: the header says that the parameter section begins in block 2 (byte "
        "512), but the file has 515 bytes");
}

TEST(CutFiles, WithinTheHeaderSayWhereTheyEnd) {
    auto bytes = ten_frames().bytes();
    bytes.resize(100);
    EXPECT_EQ(c3d_test::read(bytes).status.message(""),
              "'trial.c3d': byte 100: a header of 512 bytes expected, but the file ends here");
}

TEST(CutFiles, ParameterThatReachesIntoTheDataKeepsItsCompleteEntries) {
    auto file = ten_frames();
    file.more_parameters = [](parameter_writer& writer) {
        writer.group(9, "EVENT")
            .texts(9, "LABELS", {"Foot Strike", "Foot Off", "Foot Strike"}, 150);
        writer.with_next(300);
    };
    // The section is given a block less than it has: its last parameter reaches into the data.
    auto bytes = file.bytes();
    bytes.erase(bytes.begin() + 1024, bytes.begin() + 1536);
    const auto one_less = c3d_test::word(c3d::number_format::intel, 3);
    std::copy(one_less.begin(), one_less.end(), bytes.begin() + 16);
    const auto found = c3d_test::read(bytes);
    ASSERT_TRUE(found.status) << found.status.message(" ");
    EXPECT_THAT(found.shape(points_set), ElementsAre(3, 1, 10));
    EXPECT_EQ(found.texts("Format/Metadata/EVENT", "LABELS").size(), 1U);
    EXPECT_TRUE(found.warns_about("the entries that are complete are kept"));
}

TEST(CutFiles, DeviceThatFailsSaysWhereAndLeavesTheStoreAlone) {
    const auto bytes = ten_frames().bytes();
    for (std::uint64_t offset = 0; offset < bytes.size(); offset += 7) {
        memory_device device(bytes);
        device.fail_at(offset);
        const auto found = c3d_test::read(device);
        if (found.status) {
            EXPECT_GE(offset, 1024 + 10 * 16U);
            continue;
        }
        EXPECT_NE(found.status.message("").find("reading failed"), std::string::npos);
        EXPECT_FALSE(found.store.root().exists_group("Format"));
    }
}

TEST(CutFiles, FileThatShrinksWhileItIsReadIsAnError) {
    auto bytes = ten_frames().bytes();
    bytes.resize(1024 + 5 * 16);
    memory_device device(bytes);
    device.announce(4096);
    const auto found = c3d_test::read(device);
    EXPECT_EQ(found.status.message(""),
              "'trial.c3d': byte 1104: 80 bytes expected, but the file ends here");
}

} // namespace
