// Files whose counts are lies. None may cost more memory than its length allows, or time without
// end.

#include <string>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cpp/c3d/support/reading.hpp"
#include "tests/cpp/c3d/support/trial.hpp"

namespace {

using c3d_test::analogs_set;
using c3d_test::parameter_writer;
using c3d_test::points_set;
using c3d_test::trial;
using testing::ElementsAre;

TEST(HostileFiles, PointsThatDoNotFitAreAnError) {
    trial file;
    file.header_words = {{2, 65535}, {5, 65535}};
    file.more_parameters = [](parameter_writer& writer) {
        writer.words(trial::point, "USED", {65535}).words(trial::point, "FRAMES", {65535});
    };
    const auto found = c3d_test::read(file.bytes());
    EXPECT_FALSE(found.status);
    EXPECT_NE(found.status.message("").find("65535 points"), std::string::npos);
}

TEST(HostileFiles, ChannelsThatDoNotFitAreAnError) {
    trial file;
    file.header_words = {{3, 65535}, {10, 1}};
    file.more_parameters = [](parameter_writer& writer) {
        writer.words(trial::analog, "USED", {65535});
    };
    EXPECT_FALSE(c3d_test::read(file.bytes()).status);
}

TEST(HostileFiles, ChannelsOfWhichOneOfManyFramesFitsAreAnError) {
    trial file;
    file.samples.assign(5000, {1, 2, 3, 0});
    file.header_words = {{3, 16000}, {10, 1}};
    file.left_out = {"ANALOG", "ANALOG:USED", "ANALOG:RATE", "POINT:USED"};
    const auto found = c3d_test::read(file.bytes());
    EXPECT_FALSE(found.status);
    EXPECT_NE(found.status.message("").find("16000 × 1 analog samples"), std::string::npos);
}

TEST(HostileFiles, WithoutFramesOnlyNamedPointsAreKept) {
    trial file;
    file.labels = {"A", "B"};
    file.samples.clear();
    file.more_parameters = [](parameter_writer& writer) {
        writer.words(trial::point, "USED", {65535}).words(trial::analog, "USED", {65535});
        writer.record(trial::analog, "LABELS", -1, {0, 255, 255}, {}); // texts that cost nothing
    };
    const auto found = c3d_test::read(file.bytes());
    ASSERT_TRUE(found.status) << found.status.message(" ");
    EXPECT_THAT(found.shape(points_set), ElementsAre(3, 2, 0));
    EXPECT_THAT(found.shape(analogs_set), ElementsAre(1, 0, 0));
}

TEST(HostileFiles, FramesWithoutAnythingInThemCostNothing) {
    trial file;
    file.labels.clear();
    file.more_parameters = [](parameter_writer& writer) {
        writer.reals(trial::point, "LONG_FRAMES", {1e15F});
    };
    const auto found = c3d_test::read(file.bytes());
    ASSERT_TRUE(found.status) << found.status.message(" ");
    EXPECT_THAT(found.numbers(points_set, "NumSamples"), ElementsAre(4294967295.0));
}

TEST(HostileFiles, MemoryThatCannotBeHadIsAnError) {
    trial file;
    file.more_parameters = [](parameter_writer& writer) {
        writer.reals(trial::point, "LONG_FRAMES", {1e14F});
    };
    c3d_test::memory_device device(file.bytes());
    device.announce(std::uint64_t{1} << 52);
    const auto found = c3d_test::read(device);
    EXPECT_EQ(found.status.message(""),
              "'trial.c3d': not enough memory for the samples of a file of "
              "4503599627370496 bytes");
    EXPECT_FALSE(found.store.root().exists_group("Format"));
}

TEST(HostileFiles, TextsWithoutAWidthAreBounded) {
    trial file;
    file.more_parameters = [](parameter_writer& writer) {
        writer.group(9, "OWN");
        writer.record(9, "HUGE", -1, {0, 255, 255, 255, 255, 255, 255}, {});
        writer.texts(9, "FINE", {"a"}, 4);
    };
    const auto found = c3d_test::read(file.bytes());
    ASSERT_TRUE(found.status);
    EXPECT_FALSE(found.attribute("Format/Metadata/OWN", "HUGE"));
    EXPECT_THAT(found.texts("Format/Metadata/OWN", "FINE"), ElementsAre("a"));
    EXPECT_TRUE(found.warns_about("OWN:HUGE announces"));
}

TEST(HostileFiles, DimensionsBeyondTheFileAreCutToWhatIsThere) {
    trial file;
    file.more_parameters = [](parameter_writer& writer) {
        writer.group(9, "OWN").record(9, "HUGE", 4, {255, 255, 255, 255, 255, 255, 255}, {});
    };
    const auto found = c3d_test::read(file.bytes());
    ASSERT_TRUE(found.status) << found.status.message(" ");
    EXPECT_EQ(found.attribute("Format/Metadata/OWN", "HUGE").shape().element_count(), 0U);
}

TEST(HostileFiles, RotationsThatDoNotFitAreLeftOut) {
    trial file;
    file.more_parameters = [](parameter_writer& writer) {
        writer.group(9, "ROTATION").words(9, "USED", {65535}).words(9, "RATIO", {65535});
    };
    const auto found = c3d_test::read(file.bytes());
    ASSERT_TRUE(found.status);
    EXPECT_FALSE(found.store.root().exists_set("Format/Data/Rotations"));
}

TEST(HostileFiles, RecordThatPointsAtItselfEnds) {
    trial file;
    file.more_parameters = [](parameter_writer& writer) {
        writer.group(9, "OWN").words(9, "X", {1}).with_next(1);
    };
    EXPECT_TRUE(c3d_test::read(file.bytes()).status);
}

TEST(HostileFiles, ThousandsOfOddRecordsGiveAFewWarnings) {
    trial file;
    file.more_parameters = [](parameter_writer& writer) {
        for (int i = 0; i < 500; ++i)
            writer.record(9, fmt::format("X{}", i), 7, {}, {});
    };
    const auto found = c3d_test::read(file.bytes());
    ASSERT_TRUE(found.status);
    EXPECT_EQ(found.warnings.size(), 41U);
    EXPECT_TRUE(found.warns_about("460 more warnings left out"));
}

} // namespace
