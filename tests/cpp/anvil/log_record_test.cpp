#include <chrono>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "platform/anvil/src/log_record.hpp"

namespace {

using namespace std::chrono_literals;
using anvil::log_level;

const auto noon = std::chrono::sys_days{std::chrono::January / 31 / 2026} + 12h + 34min + 56s;

std::string record(log_level level, std::string_view text) {
    std::string lines;
    anvil::append_log_record(lines, noon + 789ms, 4711, {"gait", level, text});
    return lines;
}

TEST(LogRecord, TellsTimeLevelLoggerProcessAndText) {
    EXPECT_EQ(record(log_level::info, "Walking."),
              "2026-01-31T12:34:56.789Z [info] [gait] [4711] Walking.\n");
}

TEST(LogRecord, NumbersOfTheTimeHaveAFixedWidth) {
    std::string lines;
    const auto time = std::chrono::sys_days{std::chrono::March / 5 / 2027} + 1h + 2min + 3s + 4ms;
    anvil::append_log_record(lines, time, 1, {"gait", log_level::info, ""});
    EXPECT_EQ(lines, "2027-03-05T01:02:03.004Z [info] [gait] [1] \n");
}

TEST(LogRecord, EachLevelHasAName) {
    const std::string_view names[] = {"trace", "debug", "info", "warning", "error", "critical"};
    for (int level = 0; level < 6; ++level)
        EXPECT_EQ(record(static_cast<log_level>(level), "x"),
                  "2026-01-31T12:34:56.789Z [" + std::string{names[level]} + "] [gait] [4711] x\n");
}

TEST(LogRecord, UnknownLevelIsNamedSo) {
    for (const int level : {-1, 7})
        EXPECT_EQ(record(static_cast<log_level>(level), "x"),
                  "2026-01-31T12:34:56.789Z [unknown] [gait] [4711] x\n");
}

TEST(LogRecord, ControlCharactersOfTheTextDoNotReachTheFile) {
    using std::string_view_literals::operator""sv;
    EXPECT_EQ(record(log_level::info, "a\nb\r\nc\td\x1b[0m\0\x7f"sv),
              "2026-01-31T12:34:56.789Z [info] [gait] [4711] "
              "a\\nb\\r\\nc\td\\x1B[0m\\x00\\x7F\n");
}

TEST(LogRecord, PathsAndOtherAlphabetsAreLeftAsTheyAre) {
    EXPECT_EQ(record(log_level::info, R"(C:\new\runs\märz)"),
              "2026-01-31T12:34:56.789Z [info] [gait] [4711] C:\\new\\runs\\m\xc3\xa4rz\n");
}

TEST(LogRecord, FollowsWhatIsThereAlready) {
    std::string lines = "before\n";
    anvil::append_log_record(lines, noon, 1, {"a\nb", log_level::info, "x"});
    EXPECT_EQ(lines, "before\n2026-01-31T12:34:56.000Z [info] [a\\nb] [1] x\n");
}

} // namespace
