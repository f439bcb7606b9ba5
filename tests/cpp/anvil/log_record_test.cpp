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

/// What becomes of the text of a line.
std::string text_of(std::string_view text) {
    const auto line = record(log_level::info, text);
    const std::string_view start = "2026-01-31T12:34:56.789Z [info] [gait] [4711] ";
    return line.substr(start.size(), line.size() - start.size() - 1);
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

TEST(LogRecord, OtherAlphabetsAreLeftAsTheyAre) {
    EXPECT_EQ(text_of("m\xc3\xa4rz \xe6\xad\xa9 \xf0\x9f\x9a\xb6 \xd7\xa9"),
              "m\xc3\xa4rz \xe6\xad\xa9 \xf0\x9f\x9a\xb6 \xd7\xa9");
}

TEST(LogRecord, WhatIsEscapedIsToldFromWhatLooksLikeIt) {
    EXPECT_EQ(text_of(R"(C:\new\runs)"), R"(C:\\new\\runs)");
    EXPECT_EQ(text_of("\x1b \\x1B"), R"(\x1B \\x1B)");
}

TEST(LogRecord, ControlCharactersBeyondAsciiDoNotReachTheFile) {
    // U+0080, U+0085 (next line), U+009B (which starts commands to a terminal), U+009F; not U+00A0.
    EXPECT_EQ(text_of("\xc2\x80\xc2\x85\xc2\x9b\xc2\x9f\xc2\xa0"),
              "\\u0080\\u0085\\u009B\\u009F\xc2\xa0");
    // U+2028 and U+2029, at which editors end a line.
    EXPECT_EQ(text_of("\xe2\x80\xa8\xe2\x80\xa9"), "\\u2028\\u2029");
}

TEST(LogRecord, MarksOfTheDirectionOfWritingDoNotReachTheFile) {
    EXPECT_EQ(text_of("\xd8\x9c \xe2\x80\x8e \xe2\x80\x8f"), R"(\u061C \u200E \u200F)");
    EXPECT_EQ(text_of("\xe2\x80\xaa \xe2\x80\xae"), R"(\u202A \u202E)");
    EXPECT_EQ(text_of("\xe2\x81\xa6 \xe2\x81\xa9"), R"(\u2066 \u2069)");
    EXPECT_EQ(text_of("\xe2\x80\x8d \xe2\x81\xaa"), "\xe2\x80\x8d \xe2\x81\xaa");
}

TEST(LogRecord, BytesThatAreNoTextStayUnlessATerminalObeysThem) {
    EXPECT_EQ(text_of("a\xff\xe4z"), "a\xff\xe4z");
    EXPECT_EQ(text_of("\x9b\x31m"), "\\x9B1m");
    EXPECT_EQ(text_of("\xe2\x80"), "\xe2\\x80");                             // cut short
    EXPECT_EQ(text_of("\xc0\x8a \xe0\x82\x85"), "\xc0\\x8A \xe0\\x82\\x85"); // longer than need be
}

TEST(LogRecord, FollowsWhatIsThereAlready) {
    std::string lines = "before\n";
    anvil::append_log_record(lines, noon, 1, {"a\nb", log_level::info, "x"});
    EXPECT_EQ(lines, "before\n2026-01-31T12:34:56.000Z [info] [a\\nb] [1] x\n");
}

} // namespace
