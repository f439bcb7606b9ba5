#include <gtest/gtest.h>

#include "platform/anvil/src/log_file.hpp"
#include "tests/cpp/anvil/support/temporary_folder.hpp"
#include "tests/cpp/anvil/support/text_file.hpp"

namespace {

using anvil::log_file;
using anvil_test::content_of;
using anvil_test::temporary_folder;

/// Two open log files of one path, as two processes have them.
class LogFile : public testing::Test {
  protected:
    LogFile() {
        EXPECT_TRUE(ours_.open());
        EXPECT_TRUE(theirs_.open());
    }

    temporary_folder folder_;
    std::filesystem::path path_ = folder_ / "trace.log";
    log_file ours_{path_};
    log_file theirs_{path_};
};

TEST_F(LogFile, LinesOfBothFollowEachOther) {
    EXPECT_EQ(ours_.append("one\n"), 4U);
    EXPECT_EQ(theirs_.append("two\n"), 4U);
    EXPECT_EQ(ours_.append("three\n"), 6U);
    EXPECT_EQ(content_of(path_), "one\ntwo\nthree\n");
    EXPECT_EQ(theirs_.size(), 14U);
}

TEST_F(LogFile, HasNoSizeOnceTheOtherSetItAside) {
    EXPECT_TRUE(theirs_.set_aside());
    EXPECT_FALSE(theirs_.is_open());
    EXPECT_FALSE(ours_.size());
    EXPECT_TRUE(theirs_.open());
    EXPECT_FALSE(ours_.size());
}

TEST_F(LogFile, IsSetAsideOnceOnly) {
    EXPECT_EQ(ours_.append("former\n"), 7U);
    EXPECT_TRUE(theirs_.set_aside());
    EXPECT_TRUE(theirs_.open());
    EXPECT_EQ(theirs_.append("present\n"), 8U);

    EXPECT_TRUE(ours_.set_aside());
    EXPECT_FALSE(ours_.is_open());
    EXPECT_EQ(content_of(path_), "present\n");
    EXPECT_EQ(content_of(folder_ / "trace.log.1"), "former\n");
}

} // namespace
