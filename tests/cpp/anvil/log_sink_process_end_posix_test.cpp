#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include <anvil/log_sink_file_threaded.hpp>

#include "tests/cpp/anvil/support/temporary_folder.hpp"
#include "tests/cpp/anvil/support/text_file.hpp"

namespace {

using anvil::log_level;
using anvil_test::lines_of;
using anvil_test::temporary_folder;
using anvil_test::texts_of;

/// The code under test runs in a child, forked while there is no other thread, that ends like any
/// program.
class LogSinkAtProcessEnd : public testing::Test {
  protected:
    LogSinkAtProcessEnd() { GTEST_FLAG_SET(death_test_style, "fast"); }

    void install_sink() const {
        anvil::install_default_log_sink(
            std::make_shared<anvil::log_sink_file_threaded>(path_.string(), true));
    }

    temporary_folder folder_;
    std::filesystem::path path_ = folder_ / "trace.log";
    std::shared_ptr<anvil::log_stream> logger_ = anvil::make_default_logger("gait");
};

TEST_F(LogSinkAtProcessEnd, DefaultSinkIsDrained) {
    EXPECT_EXIT(
        {
            install_sink();
            for (int n = 0; n < 3000; ++n)
                anvil::log_line(*logger_, log_level::info, std::to_string(n));
            std::exit(0);
        },
        testing::ExitedWithCode(0), "");
    EXPECT_EQ(lines_of(path_).size(), 3000U);
}

/// Tells the standard error stream that it was flushed.
class telling_sink final : public anvil::log_sink {
  public:
    void sink_it(const anvil::log_msg&) noexcept override {}
    void flush() noexcept override { std::fputs("flushed", stderr); }
};

TEST_F(LogSinkAtProcessEnd, DefaultSinkIsFlushedBeforeItIsReleased) {
    EXPECT_EXIT(
        {
            anvil::install_default_log_sink(std::make_shared<telling_sink>());
            std::exit(0);
        },
        testing::ExitedWithCode(0), "flushed");
}

std::shared_ptr<anvil::log_stream>& logger_at_the_end() {
    static std::shared_ptr<anvil::log_stream> logger;
    return logger;
}

TEST_F(LogSinkAtProcessEnd, LinesOfExitHandlersAreWritten) {
    EXPECT_EXIT(
        {
            install_sink();
            logger_at_the_end() = logger_;
            std::atexit(
                [] { anvil::log_line(*logger_at_the_end(), log_level::info, "Good night."); });
            std::exit(0);
        },
        testing::ExitedWithCode(0), "");
    EXPECT_EQ(texts_of(path_), std::vector<std::string>{"Good night."});
}

TEST_F(LogSinkAtProcessEnd, ThreadsThatStillLogBreakNothing) {
    EXPECT_EXIT(
        {
            install_sink();
            for (int n = 0; n < 4; ++n)
                std::thread{[logger = logger_] {
                    for (;;) {
                        anvil::log_line(*logger, log_level::info, "still here");
                        logger->flush();
                    }
                }}.detach();
            while (lines_of(path_).size() < 100)
                std::this_thread::yield();
            std::exit(0);
        },
        testing::ExitedWithCode(0), "");
    for (const auto& text : texts_of(path_))
        EXPECT_EQ(text, "still here");
}

} // namespace
