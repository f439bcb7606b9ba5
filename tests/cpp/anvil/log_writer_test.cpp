#include <chrono>
#include <string>

#include <gtest/gtest.h>

#include "platform/anvil/src/log_writer.hpp"
#include "tests/cpp/anvil/support/temporary_folder.hpp"
#include "tests/cpp/anvil/support/text_file.hpp"

namespace {

using anvil::log_writer;
using anvil_test::content_of;
using anvil_test::lines_of;
using anvil_test::make_file;
using anvil_test::temporary_folder;

/// A clock that stands still until a test moves it.
log_writer::clock::time_point test_time{};
log_writer::clock::time_point read_test_time() noexcept { return test_time; }

class LogWriter : public testing::Test {
  protected:
    [[nodiscard]] log_writer writer(bool sets_aside = true) const {
        return {path_, sets_aside, &read_test_time};
    }

    temporary_folder folder_;
    std::filesystem::path path_ = folder_ / "trace.log";
    std::filesystem::path former_path_ = folder_ / "trace.log.1";
};

TEST_F(LogWriter, LinesFollowThoseOfFormerRuns) {
    make_file(path_, "old\n");
    writer().write("new\n");
    EXPECT_EQ(content_of(path_), "old\nnew\n");
}

TEST_F(LogWriter, EmptiedFileHoldsNewLinesOnly) {
    make_file(path_, "old\n");
    anvil::empty_log_file(path_);
    writer().write("new\n");
    EXPECT_EQ(content_of(path_), "new\n");
}

TEST_F(LogWriter, EmptyingMakesNoFile) {
    anvil::empty_log_file(path_);
    EXPECT_FALSE(std::filesystem::exists(path_));
}

TEST_F(LogWriter, MissingFoldersAreMade) {
    log_writer log{folder_ / "a" / "b" / "trace.log", true};
    log.write("line\n");
    EXPECT_EQ(content_of(folder_ / "a" / "b" / "trace.log"), "line\n");
}

TEST_F(LogWriter, FileOfFiveMebibytesIsSetAside) {
    const std::string full = std::string(5 * 1024 * 1024 - 1, 'x') + "\n";
    make_file(path_, full);
    make_file(former_path_, "older\n");
    writer().write("next\n");
    EXPECT_EQ(content_of(path_), "next\n");
    EXPECT_TRUE(content_of(former_path_) == full);
}

TEST_F(LogWriter, ShorterFileIsNotSetAside) {
    make_file(path_, std::string(5 * 1024 * 1024 - 2, 'x') + "\n");
    writer().write("next\n");
    EXPECT_FALSE(std::filesystem::exists(former_path_));
    EXPECT_EQ(lines_of(path_).back(), "next");
}

TEST_F(LogWriter, FileThatIsToGrowIsNeverSetAside) {
    auto log = writer(false);
    log.write(std::string(5 * 1024 * 1024, 'x') + "\n");
    log.write("next\n");
    EXPECT_FALSE(std::filesystem::exists(former_path_));
}

TEST_F(LogWriter, ManyLinesAtOnceAreSpreadOverTwoFiles) {
    make_file(path_, std::string(5 * 1024 * 1024 - 1000, 'x') + "\n");
    std::string lines;
    for (int n = 0; n < 20000; ++n)
        lines += "line " + std::to_string(n) + "\n";
    writer().write(lines);
    EXPECT_LT(std::filesystem::file_size(former_path_), 5U * 1024 * 1024 + 64 * 1024);
    const auto former = content_of(former_path_);
    EXPECT_EQ(former.substr(former.find('\n') + 1) + content_of(path_), lines);
}

TEST_F(LogWriter, LineOfAnyLengthStaysWhole) {
    const std::string lines = "short\n" + std::string(300000, 'x') + "\n" + "short\n";
    writer().write(lines);
    EXPECT_TRUE(content_of(path_) == lines);
}

TEST_F(LogWriter, FileThatSomebodyDeletedIsMadeAnew) {
#ifdef _WIN32
    GTEST_SKIP() << "a file that is open keeps its name";
#endif
    auto log = writer();
    log.write("one\n");
    std::filesystem::remove(path_);
    log.write("two\n");
    EXPECT_EQ(content_of(path_), "two\n");
}

TEST_F(LogWriter, FileThatSomebodySetAsideIsLeft) {
    auto log = writer();
    log.write("one\n");
    std::filesystem::rename(path_, former_path_);
    make_file(path_, "theirs\n");
    log.write("two\n");
    EXPECT_EQ(content_of(former_path_), "one\n");
    EXPECT_EQ(content_of(path_), "theirs\ntwo\n");
}

TEST_F(LogWriter, FullFileThatCannotBeSetAsideGoesOnGrowing) {
    make_file(path_, std::string(5 * 1024 * 1024, 'x') + "\n");
    std::filesystem::create_directories(former_path_ / "occupied");
    auto log = writer();
    log.write("one\n");
    log.write("two\n");
    EXPECT_EQ(lines_of(path_).size(), 3U);

    std::filesystem::remove_all(former_path_);
    test_time += log_writer::pause;
    log.write("three\n");
    EXPECT_EQ(content_of(path_), "three\n");
}

TEST_F(LogWriter, FileThatCannotBeOpenedIsTriedAgainAfterThePause) {
    std::filesystem::create_directory(path_);
    auto log = writer();
    log.write("dropped\n");
    std::filesystem::remove(path_);

    test_time += log_writer::pause - std::chrono::milliseconds{1};
    log.write("dropped as well\n");
    EXPECT_FALSE(std::filesystem::exists(path_));

    test_time += std::chrono::milliseconds{1};
    log.write("taken\n");
    EXPECT_EQ(content_of(path_), "taken\n");
}

} // namespace
