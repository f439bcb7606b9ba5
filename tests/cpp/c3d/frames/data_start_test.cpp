// Where the data section begins, when the pointers to it cannot be relied on.

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cpp/c3d/support/reading.hpp"
#include "tests/cpp/c3d/support/trial.hpp"

namespace {

using c3d_test::parameter_writer;
using c3d_test::points_set;
using c3d_test::trial;
using testing::ElementsAre;

trial two_hundred_frames() {
    trial file;
    file.samples.clear();
    for (int i = 0; i < 200; ++i)
        file.samples.push_back({static_cast<float>(i), 1, 2, 0});
    return file;
}

void expect_all(const c3d_test::byte_vector& bytes) {
    const auto found = c3d_test::read(bytes);
    ASSERT_TRUE(found.status) << found.status.message(" ");
    const auto x = found.row(points_set, 0, 0);
    ASSERT_EQ(x.size(), 200U);
    for (std::size_t i = 0; i < 200; ++i)
        ASSERT_EQ(x[i], static_cast<double>(i));
}

void start_at(trial& file, int by_parameter, int by_header) {
    file.more_parameters = [by_parameter](parameter_writer& writer) {
        writer.words(trial::point, "DATA_START", {by_parameter});
    };
    file.header_words = {{9, by_header}};
}

TEST(DataStart, ParameterIsBelievedBeforeTheHeader) {
    auto file = two_hundred_frames();
    file.header_words = {{9, 4}};
    expect_all(file.bytes());
}

TEST(DataStart, HeaderServesWhereTheParameterIsZero) {
    auto file = two_hundred_frames();
    file.more_parameters = [](parameter_writer& writer) {
        writer.words(trial::point, "DATA_START", {0});
    };
    expect_all(file.bytes());
}

TEST(DataStart, PointersIntoTheParametersAreNone) {
    auto file = two_hundred_frames();
    start_at(file, 2, 1);
    expect_all(file.bytes());
}

TEST(DataStart, PointersBehindTheFileAreNone) {
    auto file = two_hundred_frames();
    start_at(file, 60000, 50000);
    expect_all(file.bytes());
}

TEST(DataStart, PointerBehindTheFileThatNobodyContradictsIsThatOfACutFile) {
    auto file = two_hundred_frames();
    start_at(file, 60000, 60000);
    EXPECT_FALSE(c3d_test::read(file.bytes()).status);
    start_at(file, 0, 60000);
    EXPECT_FALSE(c3d_test::read(file.bytes()).status);
}

TEST(DataStart, WithoutPointersTheDataFollowTheParameters) {
    auto file = two_hundred_frames();
    start_at(file, 0, 0);
    expect_all(file.bytes());
}

TEST(DataStart, GapsBeforeAndBehindTheParametersAreFollowed) {
    auto file = two_hundred_frames();
    file.more_parameters = [](parameter_writer& writer) {
        writer.words(trial::point, "DATA_START", {3 + 9 + 18});
    };
    file.header_words = {{9, 3 + 9 + 18}};
    const auto whole = file.bytes();
    // Nine blocks of something before the parameters, eighteen between them and the data.
    c3d_test::byte_vector spread(whole.begin(), whole.begin() + 512);
    spread[0] = std::byte{11};
    spread.insert(spread.end(), 9 * 512, std::byte{0xEE});
    spread.insert(spread.end(), whole.begin() + 512, whole.begin() + 1024);
    spread.insert(spread.end(), 18 * 512, std::byte{0xEE});
    spread.insert(spread.end(), whole.begin() + 1024, whole.end());
    expect_all(spread);
}

TEST(DataStart, BlockCountOfTheSectionDoesNotMatter) {
    auto bytes = two_hundred_frames().bytes();
    for (int count : {0, 1, 2, 255}) {
        bytes[514] = static_cast<std::byte>(count);
        expect_all(bytes);
    }
}

TEST(DataStart, FirstBytesOfTheSectionDoNotMatter) {
    auto bytes = two_hundred_frames().bytes();
    bytes[512] = std::byte{0};
    bytes[513] = std::byte{0};
    expect_all(bytes);
}

TEST(DataStart, SectionLargerThanWhatIsReadAtFirstIsReadAsAWhole) {
    auto file = two_hundred_frames();
    file.more_parameters = [](parameter_writer& writer) {
        for (int i = 0; i < 10; ++i) {
            writer.texts(trial::point, fmt::format("TEXT{}", i), std::vector<std::string>(100, "x"),
                         100);
        }
        writer.texts(trial::point, "LABELS", {"LAST"}, 4);
    };
    auto bytes = file.bytes();
    bytes[514] = std::byte{0};
    expect_all(bytes);
    EXPECT_THAT(c3d_test::read(bytes).texts(points_set, "Labels"), ElementsAre("LAST"));
}

} // namespace
