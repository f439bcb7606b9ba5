#include <atomic>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <iterator>
#include <string>
#include <thread>

#include <gtest/gtest.h>
#include <pthread.h>
#include <unistd.h>

#include <anvil/log_sink_file_threaded.hpp>

#include "tests/cpp/anvil/support/process_limits.hpp"
#include "tests/cpp/anvil/support/sanitizers.hpp"
#include "tests/cpp/anvil/support/temporary_folder.hpp"
#include "tests/cpp/anvil/support/text_file.hpp"

namespace {

using anvil::log_level;
using anvil::log_sink_file_threaded;
using anvil_test::temporary_folder;

std::ptrdiff_t entries_in(const char* folder) {
    return std::distance(std::filesystem::directory_iterator{folder}, {});
}

const auto threads_at_start = entries_in("/proc/self/task");

/// True once the process has `count` threads: the system lists a joined one a moment longer.
bool comes_to_have_threads(std::ptrdiff_t count) {
    for (int look = 0; look < 10000; ++look) {
        if (entries_in("/proc/self/task") == count)
            return true;
        std::this_thread::sleep_for(std::chrono::milliseconds{1});
    }
    return false;
}

std::atomic<bool> handled = false;
std::atomic<pthread_t> handling_thread{};

void note_thread(int) {
    handling_thread = ::pthread_self();
    handled = true;
}

class LogSinkThreadCount : public testing::Test {
  protected:
    void SetUp() override {
        if (anvil_test::runtime_has_threads)
            GTEST_SKIP() << "The sanitizer's runtime has threads of its own.";
    }
};

TEST_F(LogSinkThreadCount, SinkStartsOneThreadWithTheFirstLine) {
    const temporary_folder folder;
    log_sink_file_threaded sink{(folder / "trace.log").string(), true};
    EXPECT_TRUE(comes_to_have_threads(threads_at_start));
    for (int n = 0; n < 100; ++n)
        sink.sink_it({"gait", log_level::info, "line"});
    EXPECT_EQ(entries_in("/proc/self/task"), threads_at_start + 1);
}

TEST_F(LogSinkThreadCount, FlushLeavesNeitherThreadNorOpenFile) {
    const temporary_folder folder;
    const auto files = entries_in("/proc/self/fd");
    log_sink_file_threaded sink{(folder / "trace.log").string(), true};
    sink.sink_it({"gait", log_level::info, "line"});
    sink.flush();
    EXPECT_EQ(entries_in("/proc/self/fd"), files);
    EXPECT_TRUE(comes_to_have_threads(threads_at_start));
}

TEST(LogSinkThreads, SignalsAreLeftToTheProgramsThreads) {
    const temporary_folder folder;
    log_sink_file_threaded sink{(folder / "trace.log").string(), true};
    sink.sink_it({"gait", log_level::info, "line"});
    const auto former = std::signal(SIGUSR1, &note_thread);
    ::sigset_t signals;
    ::sigemptyset(&signals);
    ::sigaddset(&signals, SIGUSR1);
    ::pthread_sigmask(SIG_BLOCK, &signals, nullptr);

    ::kill(::getpid(), SIGUSR1);
    sink.sink_it({"gait", log_level::info, "wakes the thread"});
    sink.flush();
    EXPECT_FALSE(handled);

    ::pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
    ASSERT_TRUE(handled); // unblocking delivers it before it returns
    EXPECT_TRUE(::pthread_equal(handling_thread, ::pthread_self()));
    std::signal(SIGUSR1, former);
}

TEST(LogSinkThreads, FullDiskBreaksNothing) {
    const temporary_folder folder;
    log_sink_file_threaded sink{(folder / "trace.log").string(), true};
    const anvil_test::full_disk disk{1000};
    for (int n = 0; n < 1000; ++n)
        sink.sink_it({"gait", log_level::info, "line"});
    sink.flush();
    EXPECT_EQ(std::filesystem::file_size(folder / "trace.log"), 1000U);
}

} // namespace
