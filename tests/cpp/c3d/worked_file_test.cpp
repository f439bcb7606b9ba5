// A complete file, byte by byte: one point, one analog channel with two samples a frame, two
// frames.

#include <algorithm>
#include <cmath>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cpp/c3d/support/reading.hpp"

namespace {

using c3d_test::analogs_set;
using c3d_test::byte_vector;
using c3d_test::hex;
using c3d_test::points_set;
using testing::ElementsAre;
using testing::IsEmpty;

byte_vector worked_file() {
    byte_vector file(1536);
    const auto put = [&](std::size_t offset, const char* bytes) {
        const auto content = hex(bytes);
        std::copy(content.begin(), content.end(),
                  file.begin() + static_cast<std::ptrdiff_t>(offset));
    };
    put(0, "02 50 | 01 00 | 02 00 | 01 00 | 02 00 | 0A 00 | CD CC CC BD | 03 00 | 02 00 | "
           "00 00 C8 42");
    put(298, "39 30");
    put(0x200, "01 50 01 54");
    put(0x204, "05 FF 50 4F 49 4E 54 03 00 00");
    put(0x20E, "FC 01 55 53 45 44 07 00 02 00 01 00 00");
    put(0x21B, "FB 01 53 43 41 4C 45 09 00 04 00 CD CC CC BD 00");
    put(0x22B, "FC 01 52 41 54 45 09 00 04 00 00 00 C8 42 00");
    put(0x23A, "F6 01 44 41 54 41 5F 53 54 41 52 54 07 00 02 00 03 00 00");
    put(0x24D, "FA 01 46 52 41 4D 45 53 07 00 02 00 02 00 00");
    put(0x25C, "06 01 4C 41 42 45 4C 53 0B 00 FF 02 04 01 4C 41 53 49 00");
    put(0x26F, "05 01 55 4E 49 54 53 0A 00 FF 01 04 6D 6D 20 20 00");
    put(0x280, "06 FE 41 4E 41 4C 4F 47 03 00 00");
    put(0x28B, "FC 02 55 53 45 44 07 00 02 00 01 00 00");
    put(0x298, "06 02 4C 41 42 45 4C 53 0B 00 FF 02 04 01 45 4D 30 31 00");
    put(0x2AB, "09 02 47 45 4E 5F 53 43 41 4C 45 09 00 04 00 00 00 80 3F 00");
    put(0x2BF, "05 02 53 43 41 4C 45 0A 00 04 01 01 0A D7 A3 3B 00");
    put(0x2D0, "06 02 4F 46 46 53 45 54 08 00 02 01 01 00 08 00");
    put(0x2E0, "05 02 55 4E 49 54 53 0B 00 FF 02 04 01 56 20 20 20 00");
    put(0x2F2, "FC 02 52 41 54 45 09 00 04 00 00 00 48 43 00");
    put(0x301, "0E FD 46 4F 52 43 45 5F 50 4C 41 54 46 4F 52 4D 03 00 00");
    put(0x314, "04 03 55 53 45 44 00 00 02 00 00 00 00");
    put(0x400, "00 00 C9 42 00 00 A2 C1 00 80 6D 44 00 40 41 44");
    put(0x410, "00 00 00 45 00 40 06 45");
    put(0x424, "00 00 80 BF");
    put(0x428, "00 00 00 45 00 00 E7 44");
    return file;
}

TEST(WorkedFile, PointIsThereInTheFirstFrameOnly) {
    const auto found = c3d_test::read(worked_file());
    ASSERT_TRUE(found.status) << found.status.message(" ");
    EXPECT_THAT(found.shape(points_set), ElementsAre(3, 1, 2));
    const auto values = found.values(points_set);
    EXPECT_EQ(values[0], 100.5);
    EXPECT_EQ(values[2], -20.25);
    EXPECT_EQ(values[4], 950.0);
    for (std::size_t i : {1U, 3U, 5U})
        EXPECT_TRUE(std::isnan(values[i]));
    EXPECT_THAT(found.numbers(points_set, "Residuals"), ElementsAre(773.0, -1.0));
}

TEST(WorkedFile, AnalogSamplesAreVolts) {
    const auto found = c3d_test::read(worked_file());
    EXPECT_THAT(found.shape(analogs_set), ElementsAre(1, 1, 4));
    const double scale = 0.005F;
    EXPECT_THAT(found.values(analogs_set), ElementsAre(0.0, 100 * scale, 0.0, -200 * scale));
}

TEST(WorkedFile, TimeBaseIsThatOfThePointsAndOfTheAnalogs) {
    const auto found = c3d_test::read(worked_file());
    EXPECT_THAT(found.numbers(points_set, "NumSamples"), ElementsAre(2));
    EXPECT_THAT(found.numbers(points_set, "SampleRate"), ElementsAre(100.0));
    EXPECT_THAT(found.numbers(points_set, "StartTime"), ElementsAre(0.0));
    EXPECT_THAT(found.numbers(analogs_set, "NumSamples"), ElementsAre(4));
    EXPECT_THAT(found.numbers(analogs_set, "SampleRate"), ElementsAre(200.0));
    EXPECT_THAT(found.numbers(analogs_set, "StartTime"), ElementsAre(0.0));
}

TEST(WorkedFile, ChannelsAreDescribed) {
    const auto found = c3d_test::read(worked_file());
    EXPECT_THAT(found.texts(points_set, "Labels"), ElementsAre("LASI"));
    EXPECT_THAT(found.texts(points_set, "SetNames"), ElementsAre("LASI"));
    EXPECT_THAT(found.texts(points_set, "Types"), ElementsAre("marker"));
    EXPECT_THAT(found.texts(points_set, "Units"), ElementsAre("mm"));
    EXPECT_THAT(found.texts(points_set, "Descriptions"), ElementsAre(""));
    EXPECT_THAT(found.texts(analogs_set, "Labels"), ElementsAre("EM01"));
    EXPECT_THAT(found.texts(analogs_set, "Units"), ElementsAre("V"));
    EXPECT_THAT(found.texts(analogs_set, "Types"), ElementsAre("Analog"));
    EXPECT_THAT(found.numbers(analogs_set, "Scales"), ElementsAre(double{0.005F}));
    EXPECT_THAT(found.numbers(analogs_set, "Offsets"), ElementsAre(2048.0));
    EXPECT_THAT(found.numbers(analogs_set, "Gain"), ElementsAre(0));
}

TEST(WorkedFile, NothingIsOdd) { EXPECT_THAT(c3d_test::read(worked_file()).warnings, IsEmpty()); }

TEST(WorkedFile, LastRecordIsRead) {
    const auto found = c3d_test::read(worked_file());
    EXPECT_THAT(found.numbers("Format/Metadata/FORCE_PLATFORM", "USED"), ElementsAre(0));
}

TEST(WorkedFile, IsReadHoweverMuchOfItsEndIsMissing) {
    const auto whole = worked_file();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const auto found =
            c3d_test::read(byte_vector(whole.begin(), whole.begin() + static_cast<int>(length)));
        if (length < 0x418) {
            EXPECT_FALSE(found.status) << length; // not even the first frame is there
            EXPECT_FALSE(found.store.root().exists_group("Format")) << length;
            const auto text = found.status.message("");
            EXPECT_EQ(text.substr(0, 17), "'trial.c3d': byte") << length;
        } else {
            EXPECT_TRUE(found.status) << length;
            EXPECT_EQ(found.shape(points_set).at(2), length < 0x430 ? 1 : 2) << length;
            EXPECT_EQ(found.warnings.size(), length < 0x430 ? 1U : 0U) << length;
        }
    }
}

} // namespace
