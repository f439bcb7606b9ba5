#include "plugins/opensim/cells.hpp"

#include <cmath>
#include <string>
#include <string_view>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using opensim::cells_of;
using opensim::number_cells;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(Cells, TabsSeparateWordsThatHaveBlanks) {
    EXPECT_THAT(cells_of("Frame#\t L ASI \t\t\tRASI\t\t"),
                ElementsAre("Frame#", "L ASI", "", "", "RASI"));
}

TEST(Cells, WithoutTabsBlanksSeparate) {
    EXPECT_THAT(cells_of("  time  a b "), ElementsAre("time", "a", "b"));
    EXPECT_THAT(cells_of(""), IsEmpty());
    EXPECT_THAT(cells_of("\t\t"), IsEmpty());
}

/// The cells of a row, for short: numbers as they are, "-" for empty ones, "!" for what is none.
std::string row(std::string_view line) {
    using kind = number_cells::kind;
    number_cells cells(line);
    std::string found;
    for (auto next = cells.next(); next != kind::none; next = cells.next()) {
        found += found.empty() ? "" : " ";
        if (next == kind::number)
            found += std::isnan(cells.value()) ? "nan" : std::to_string(cells.value());
        else
            found += next == kind::empty ? "-" : "!" + std::string(cells.text());
    }
    return found;
}

TEST(NumberCells, AreBetweenTabsOrBlanks) {
    EXPECT_EQ(row("1\t2.5\t-3e1"), "1.000000 2.500000 -30.000000");
    EXPECT_EQ(row("  1   2.5 -3e1  "), "1.000000 2.500000 -30.000000");
    EXPECT_EQ(row("1 \t 2.5 -3e1\t4"), "1.000000 2.500000 -30.000000 4.000000");
}

TEST(NumberCells, MayBeEmptyBetweenTabs) {
    EXPECT_EQ(row("1\t\t 2\t \t"), "1.000000 - 2.000000 - -");
    EXPECT_EQ(row("\t1"), "- 1.000000");
    EXPECT_EQ(row(""), "-");
}

TEST(NumberCells, AreNothingButNumbers) {
    EXPECT_EQ(row("1,5\t2x 3 0x10\t1..2 --1 +-1"), "!1,5 !2x 3.000000 !0x10 !1..2 !--1 !+-1");
    EXPECT_EQ(row("1e999 nan"), "!1e999 nan");
}

} // namespace
