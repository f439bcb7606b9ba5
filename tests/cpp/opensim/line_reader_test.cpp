#include "plugins/opensim/line_reader.hpp"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "plugins/opensim/text_error.hpp"
#include "tests/cpp/strata/support/memory_device.hpp"

namespace {

using opensim::line_reader;
using strata_test::memory_device;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> lines_of(const std::string& content) {
    memory_device device(content);
    line_reader reader(device);
    std::vector<std::string> lines;
    while (reader.next())
        lines.emplace_back(reader.line());
    return lines;
}

std::string failure_of(const std::string& content) {
    try {
        (void)lines_of(content);
        return {};
    } catch (const opensim::text_error& error) {
        return error.what();
    }
}

TEST(LineReader, LinesEndWithNewlinesOfBothKindsAndTheLastWithoutAny) {
    EXPECT_THAT(lines_of("a\r\n\nb\r\nc"), ElementsAre("a", "", "b", "c"));
    EXPECT_THAT(lines_of("a\n"), ElementsAre("a"));
    EXPECT_THAT(lines_of(""), IsEmpty());
}

TEST(LineReader, ByteOrderMarkIsNoPartOfTheFirstLine) {
    EXPECT_THAT(lines_of("\xEF\xBB\xBF"
                         "a\n\xEF\xBB\xBF"
                         "b"),
                ElementsAre("a", "\xEF\xBB\xBF"
                                 "b"));
}

TEST(LineReader, LinesMayBeLongerThanWhatIsReadAtOnce) {
    const std::string first(3000000, 'x');
    const std::string second(1500000, 'y');
    EXPECT_THAT(lines_of(first + "\n" + second + "\nz"), ElementsAre(first, second, "z"));
}

TEST(LineReader, LineWithoutEndIsNoTable) {
    EXPECT_EQ(failure_of("a\n" + std::string(line_reader::longest_line + 2000000, 'x')),
              "line 2: the length of the line, expected at most 16777216 bytes, got more");
}

TEST(LineReader, NulIsNoText) {
    EXPECT_EQ(failure_of(std::string("a\nbc\0d\n", 7)),
              "line 2: byte 3 of the line, expected text, got NUL");
}

TEST(LineReader, SaysWhetherTheLastLineHasAnEnd) {
    memory_device device("a\n \t\nb");
    line_reader reader(device);
    ASSERT_TRUE(reader.next_with_content());
    EXPECT_TRUE(reader.is_complete());
    ASSERT_TRUE(reader.next_with_content());
    EXPECT_EQ(reader.line(), "b");
    EXPECT_EQ(reader.number(), 3U);
    EXPECT_FALSE(reader.is_complete());
    reader.put_back();
    ASSERT_TRUE(reader.next_with_content());
    EXPECT_EQ(reader.line(), "b");
    EXPECT_FALSE(reader.next());
}

} // namespace
