#include <memory>
#include <regex>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <anvil/log_sink_file_threaded.hpp>

#include "tests/cpp/anvil/support/log_line.hpp"
#include "tests/cpp/anvil/support/temporary_folder.hpp"
#include "tests/cpp/anvil/support/text_file.hpp"

namespace {

using anvil::log_level;
using anvil::log_sink_file_threaded;
using anvil_test::lines_of;
using anvil_test::log;
using anvil_test::make_file;
using anvil_test::temporary_folder;
using anvil_test::texts_of;
using strings = std::vector<std::string>;

class LogSinkFileThreaded : public testing::Test {
  protected:
    [[nodiscard]] std::unique_ptr<log_sink_file_threaded> sink(bool append = true) const {
        return std::make_unique<log_sink_file_threaded>(path_.string(), append);
    }

    temporary_folder folder_;
    std::filesystem::path path_ = folder_ / "trace.log";
};

TEST_F(LogSinkFileThreaded, LineHasItsForm) {
    const auto log_sink = sink();
    log_sink->sink_it({"gait", log_level::error, "Stumbled."});
    log_sink->flush();
    const std::regex form{R"(20[0-9]{2}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}\.[0-9]{3}Z )"
                          R"(\[error\] \[gait\] \[[0-9]+\] Stumbled\.)"};
    EXPECT_THAT(lines_of(path_), testing::ElementsAre(testing::Truly([&](const auto& line) {
                    return std::regex_match(line, form);
                })));
}

TEST_F(LogSinkFileThreaded, NothingIsMadeBeforeTheFirstLine) {
    sink()->flush();
    EXPECT_FALSE(std::filesystem::exists(path_));
}

TEST_F(LogSinkFileThreaded, FlushedLinesAreInTheFileInOrder) {
    const auto log_sink = sink();
    strings expected;
    for (int n = 0; n < 5000; ++n) {
        expected.push_back("line " + std::to_string(n));
        log(*log_sink, expected.back());
    }
    log_sink->flush();
    EXPECT_EQ(texts_of(path_), expected);
}

TEST_F(LogSinkFileThreaded, LinesAfterAFlushAreWrittenToo) {
    const auto log_sink = sink();
    strings expected;
    for (int n = 0; n < 100; ++n) {
        expected.push_back("line " + std::to_string(n));
        log(*log_sink, expected.back());
        log_sink->flush();
        ASSERT_EQ(texts_of(path_), expected);
    }
}

TEST_F(LogSinkFileThreaded, DestructorWritesWhatIsLeft) {
    auto log_sink = sink();
    for (int n = 0; n < 3000; ++n)
        log(*log_sink, std::to_string(n));
    log_sink.reset();
    const auto texts = texts_of(path_);
    ASSERT_EQ(texts.size(), 3000U);
    EXPECT_EQ(texts.back(), "2999");
}

TEST_F(LogSinkFileThreaded, MoreLinesThanTheQueueHoldsAreAllWritten) {
    auto log_sink = sink(false);
    const std::string text(1000, 'x');
    for (int n = 0; n < 10000; ++n)
        log(*log_sink, text);
    log_sink.reset();
    EXPECT_EQ(lines_of(path_).size(), 10000U);
}

TEST_F(LogSinkFileThreaded, LinesFollowThoseOfFormerRuns) {
    make_file(path_, "before\n");
    const auto log_sink = sink(true);
    log(*log_sink, "now");
    log_sink->flush();
    EXPECT_EQ(lines_of(path_).size(), 2U);
}

TEST_F(LogSinkFileThreaded, FileStartsEmptyWithoutTheFlag) {
    make_file(path_, "before\n");
    const auto log_sink = sink(false);
    log(*log_sink, "now");
    log_sink->flush();
    log(*log_sink, "then");
    log_sink->flush();
    EXPECT_EQ(texts_of(path_), (strings{"now", "then"}));
}

TEST_F(LogSinkFileThreaded, FullFileIsSetAside) {
    make_file(path_, std::string(5 * 1024 * 1024, 'x'));
    const auto log_sink = sink(true);
    log(*log_sink, "now");
    log_sink->flush();
    EXPECT_EQ(texts_of(path_), strings{"now"});
    EXPECT_EQ(std::filesystem::file_size(folder_ / "trace.log.1"), 5U * 1024 * 1024);
}

TEST_F(LogSinkFileThreaded, RelativePathStaysWhereItWas) {
    const auto start = std::filesystem::current_path();
    std::filesystem::current_path(folder_.path());
    log_sink_file_threaded log_sink{"relative.log", true};
    std::filesystem::current_path(start);
    log(log_sink, "now");
    log_sink.flush();
    EXPECT_EQ(texts_of(folder_ / "relative.log"), strings{"now"});
}

TEST_F(LogSinkFileThreaded, FileThatCannotBeWrittenTakesNoLines) {
    make_file(folder_ / "file", "");
    for (const auto& path : {folder_.path(), folder_ / "file" / "trace.log"}) {
        log_sink_file_threaded log_sink{path.string(), true};
        for (int n = 0; n < 1000; ++n)
            log(log_sink, "nowhere");
        log_sink.flush();
    }
    EXPECT_EQ(std::filesystem::file_size(folder_ / "file"), 0U);
}

TEST_F(LogSinkFileThreaded, ThreadsLoseNoLinesAndFlushSeesTheirOwn) {
    constexpr int lines = 1000;
    const auto log_sink = sink();
    const auto work = [&](char name) {
        for (int n = 0; n < lines; ++n) {
            log(*log_sink, name + std::to_string(n));
            if (n % 50 == 0)
                log_sink->flush();
        }
    };
    std::vector<std::thread> threads;
    for (const char name : {'a', 'b', 'c', 'd'})
        threads.emplace_back(work, name);
    for (auto& thread : threads)
        thread.join();
    log_sink->flush();

    std::unordered_map<char, int> next;
    for (const auto& text : texts_of(path_))
        EXPECT_EQ(text.substr(1), std::to_string(next[text[0]]++));
    EXPECT_THAT(
        next, testing::UnorderedElementsAre(testing::Pair('a', lines), testing::Pair('b', lines),
                                            testing::Pair('c', lines), testing::Pair('d', lines)));
}

} // namespace
