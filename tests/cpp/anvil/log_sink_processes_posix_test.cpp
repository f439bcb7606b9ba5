#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <anvil/log_sink_file_threaded.hpp>

#include "tests/cpp/anvil/support/child_process.hpp"
#include "tests/cpp/anvil/support/log_line.hpp"
#include "tests/cpp/anvil/support/sanitizers.hpp"
#include "tests/cpp/anvil/support/temporary_folder.hpp"
#include "tests/cpp/anvil/support/text_file.hpp"

namespace {

using anvil::log_level;
using anvil::log_sink_file_threaded;
using anvil_test::ended_well;
using anvil_test::lines_of;
using anvil_test::log;
using anvil_test::start_child;
using anvil_test::temporary_folder;
using anvil_test::text_of;
using anvil_test::texts_of;
using strings = std::vector<std::string>;

constexpr int lines_per_process = 5000;

/// Forks while the sink's thread, and others, may be anywhere in their work.
class LogSinkForks : public testing::Test {
  protected:
    void SetUp() override {
        if (!anvil_test::runtime_survives_forks)
            GTEST_SKIP() << "The sanitizer's runtime does not survive a fork beside other threads.";
    }
};

/// Two processes log to `path` at the same time.
void log_from_two_processes(const std::filesystem::path& path) {
    const auto work = [&path](const std::string& name) {
        log_sink_file_threaded sink{path.string(), true};
        for (int n = 0; n < lines_per_process; ++n)
            log(sink, name + std::to_string(n));
    };
    const auto first = start_child([&] { work("a"); });
    const auto second = start_child([&] { work("b"); });
    EXPECT_TRUE(ended_well(first));
    EXPECT_TRUE(ended_well(second));
}

/// Each of the processes' lines is there, whole, once and in its order.
void expect_all_lines(const strings& texts) {
    std::unordered_map<char, int> next;
    for (const auto& text : texts)
        ASSERT_EQ(text.substr(1), std::to_string(next[text[0]]++)) << text;
    EXPECT_THAT(next, testing::UnorderedElementsAre(testing::Pair('a', lines_per_process),
                                                    testing::Pair('b', lines_per_process)));
}

TEST(LogSinkProcesses, LinesOfTwoProcessesStayWhole) {
    const temporary_folder folder;
    log_from_two_processes(folder / "trace.log");
    expect_all_lines(texts_of(folder / "trace.log"));
}

TEST(LogSinkProcesses, TwoProcessesSetAFullFileAsideOnce) {
    const temporary_folder folder;
    const auto path = folder / "trace.log";
    anvil_test::make_file(path, std::string(5 * 1024 * 1024 - 20000, 'x') + "\n");
    log_from_two_processes(path);
    auto texts = texts_of(folder / "trace.log.1");
    ASSERT_FALSE(texts.empty());
    EXPECT_TRUE(texts.front().ends_with("xxx"));
    texts.erase(texts.begin());
    const auto rest = texts_of(path);
    EXPECT_FALSE(rest.empty());
    texts.insert(texts.end(), rest.begin(), rest.end());
    expect_all_lines(texts);
}

TEST_F(LogSinkForks, ForkedChildLogsItsOwnLinesOnly) {
    const temporary_folder folder;
    log_sink_file_threaded sink{(folder / "trace.log").string(), true};
    log(sink, "parent before");
    const auto child = start_child([&sink] {
        sink.flush(); // nothing of its own yet
        log(sink, "child");
        sink.flush();
    });
    EXPECT_TRUE(ended_well(child));
    log(sink, "parent after");
    sink.flush();
    EXPECT_THAT(texts_of(folder / "trace.log"),
                testing::UnorderedElementsAre("parent before", "child", "parent after"));
}

TEST(LogSinkProcesses, ForkedChildStatesItsOwnProcessNumber) {
    const temporary_folder folder;
    log_sink_file_threaded sink{(folder / "trace.log").string(), true};
    log(sink, "parent");
    sink.flush();
    const auto child = start_child([&sink] {
        log(sink, "child");
        sink.flush();
    });
    EXPECT_TRUE(ended_well(child));
    const auto lines = lines_of(folder / "trace.log");
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_THAT(lines[0], testing::EndsWith("[" + std::to_string(::getpid()) + "] parent"));
    EXPECT_THAT(lines[1], testing::EndsWith("[" + std::to_string(child) + "] child"));
}

TEST(LogSinkProcesses, ForkedChildDoesNotEmptyTheFile) {
    const temporary_folder folder;
    log_sink_file_threaded sink{(folder / "trace.log").string(), false};
    log(sink, "parent");
    sink.flush();
    const auto child = start_child([&sink] {
        log(sink, "child");
        sink.flush();
    });
    EXPECT_TRUE(ended_well(child));
    EXPECT_EQ(texts_of(folder / "trace.log"), (strings{"parent", "child"}));
}

TEST_F(LogSinkForks, GrandchildLogsToo) {
    const temporary_folder folder;
    log_sink_file_threaded sink{(folder / "trace.log").string(), true};
    log(sink, "parent");
    const auto child = start_child([&sink] {
        log(sink, "child");
        const auto grandchild = start_child([&sink] {
            log(sink, "grandchild");
            sink.flush();
        });
        if (!ended_well(grandchild))
            throw grandchild;
        sink.flush();
    });
    EXPECT_TRUE(ended_well(child));
    sink.flush();
    EXPECT_THAT(texts_of(folder / "trace.log"),
                testing::UnorderedElementsAre("parent", "child", "grandchild"));
}

TEST_F(LogSinkForks, ChildMayEndASinkThatItInherited) {
    const temporary_folder folder;
    auto sink = std::make_unique<log_sink_file_threaded>((folder / "trace.log").string(), true);
    log(*sink, "parent");
    const auto silent = start_child([&sink] { sink.reset(); });
    const auto talking = start_child([&sink] {
        log(*sink, "child");
        sink.reset();
    });
    EXPECT_TRUE(ended_well(silent));
    EXPECT_TRUE(ended_well(talking));
    sink.reset();
    EXPECT_THAT(texts_of(folder / "trace.log"), testing::UnorderedElementsAre("parent", "child"));
}

/// Forks again and again while two threads log; every child logs through the default sink and
/// flushes. Gives the number of lines that the threads logged.
int fork_while_threads_log(anvil::log_stream& logger, int children) {
    std::atomic<bool> enough = false;
    std::atomic<int> count = 0;
    const auto work = [&] {
        while (!enough)
            anvil::log_line(logger, log_level::info, "p" + std::to_string(count++));
    };
    std::vector<std::thread> threads;
    for (int n = 0; n < 2; ++n)
        threads.emplace_back(work);
    for (int n = 0; n < children; ++n) {
        const auto child = start_child([&logger, n] {
            for (int line = 0; line < 10; ++line)
                anvil::log_line(logger, log_level::info,
                                "c" + std::to_string(n) + "." + std::to_string(line));
            logger.flush();
        });
        EXPECT_TRUE(ended_well(child)) << n;
        logger.flush();
    }
    enough = true;
    for (auto& thread : threads)
        thread.join();
    return count;
}

TEST_F(LogSinkForks, ForkWhileThreadsLogLosesAndRepeatsNothing) {
    constexpr int children = 30;
    const temporary_folder folder;
    const auto path = folder / "trace.log";
    anvil::install_default_log_sink(std::make_shared<log_sink_file_threaded>(path.string(), false));
    const auto logger = anvil::make_default_logger("gait");
    const int parents_lines = fork_while_threads_log(*logger, children);
    anvil::install_default_log_sink(nullptr);

    std::unordered_map<std::string, int> found;
    for (const auto& text : texts_of(path))
        ++found[text];
    EXPECT_EQ(found.size(), static_cast<std::size_t>(parents_lines + children * 10));
    for (const auto& [text, times] : found)
        EXPECT_EQ(times, 1) << text;
    for (int n = 0; n < children; ++n)
        EXPECT_EQ(found["c" + std::to_string(n) + ".9"], 1) << n;
}

TEST_F(LogSinkForks, ForkWhileThreadsUseTheDefaultSinkDoesNotBlockTheChild) {
    const auto logger = anvil::make_default_logger("gait");
    std::atomic<bool> enough = false;
    const auto work = [&] {
        while (!enough)
            logger->flush();
    };
    std::thread first{work};
    std::thread second{work};
    for (int n = 0; n < 200; ++n)
        EXPECT_TRUE(ended_well(start_child([&] { logger->flush(); }))) << n;
    enough = true;
    first.join();
    second.join();
}

} // namespace
