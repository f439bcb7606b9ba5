#include <optional>
#include <string>

#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>

#include "platform/anvil/src/log_writer.hpp"
#include "tests/cpp/anvil/support/process_limits.hpp"
#include "tests/cpp/anvil/support/temporary_folder.hpp"
#include "tests/cpp/anvil/support/text_file.hpp"

namespace {

using anvil::log_writer;
using anvil_test::content_of;
using anvil_test::lines_of;
using anvil_test::make_file;
using anvil_test::temporary_folder;

/// A clock by which every pause is over at the next look.
log_writer::clock::time_point read_hasty_clock() noexcept {
    static log_writer::clock::time_point time{};
    return time += log_writer::pause;
}

TEST(LogWriterPosix, LinesAfterAFullDiskAreWhole) {
    const temporary_folder folder;
    log_writer log{folder / "trace.log", true, &read_hasty_clock};
    {
        const anvil_test::full_disk disk{8};
        log.write("one\n");
        log.write("interrupted\n");
        log.write("dropped\n");
    }
    log.write("two\n");
    EXPECT_EQ(content_of(folder / "trace.log"), "one\ninte\ntwo\n");
}

TEST(LogWriterPosix, PipeTakesNoLinesAndIsNotWaitedFor) {
    const temporary_folder folder;
    ASSERT_EQ(::mkfifo((folder / "trace.log").c_str(), 0600), 0);
    log_writer log{folder / "trace.log", true};
    log.write("dropped\n");
    EXPECT_TRUE(std::filesystem::is_fifo(folder / "trace.log"));
}

TEST(LogWriterPosix, FileThatAnotherProcessIsSettingAsideIsLeftToIt) {
    const temporary_folder folder;
    make_file(folder / "trace.log", std::string(log_writer::full_size, 'x') + "\n");
    const int other = ::open((folder / "trace.log").c_str(), O_RDONLY);
    ASSERT_EQ(::flock(other, LOCK_EX), 0);
    log_writer log{folder / "trace.log", true, &read_hasty_clock};
    log.write("one\n");
    EXPECT_FALSE(std::filesystem::exists(folder / "trace.log.1"));
    EXPECT_EQ(lines_of(folder / "trace.log").back(), "one");

    ::close(other);
    log.write("two\n");
    EXPECT_EQ(content_of(folder / "trace.log"), "two\n");
}

TEST(LogWriterPosix, FolderWithoutPermissionTakesNoLines) {
    const temporary_folder folder;
    std::filesystem::permissions(folder.path(), std::filesystem::perms{0555});
    {
        const anvil_test::ordinary_user user;
        log_writer log{folder / "trace.log", true};
        log.write("dropped\n");
        log_writer deeper{folder / "deeper" / "trace.log", true};
        deeper.write("dropped\n");
    }
    std::filesystem::permissions(folder.path(), std::filesystem::perms{0755});
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

} // namespace
