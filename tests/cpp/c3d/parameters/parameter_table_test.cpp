#include "plugins/c3d/parameters/parameter_table.hpp"

#include <string>

#include <gtest/gtest.h>

#include "tests/cpp/c3d/support/parameter_writer.hpp"
#include "tests/cpp/c3d/support/table_of.hpp"

namespace {

using c3d_test::parameter_writer;
using c3d_test::table_of;

TEST(ParameterTable, ParametersComeBeforeTheirGroups) {
    parameter_writer writer;
    writer.words(2, "USED", {4}).words(1, "USED", {3}).group(1, "POINT").group(2, "ANALOG");
    const table_of found(writer);
    EXPECT_EQ(found.table.count("POINT", "USED"), 3U);
    EXPECT_EQ(found.table.count("ANALOG", "USED"), 4U);
    EXPECT_TRUE(found.notes.texts().empty());
}

TEST(ParameterTable, NamesAreFoundWhateverTheirCase) {
    parameter_writer writer;
    writer.group(1, "Point").words(1, "Used", {3});
    const table_of found(writer);
    EXPECT_TRUE(found.table.has_group("POINT"));
    EXPECT_EQ(found.table.count("POINT", "USED"), 3U);
    EXPECT_EQ(found.table.groups()[0].name, "Point");
}

TEST(ParameterTable, LastOfARepeatedNameCounts) {
    parameter_writer writer;
    writer.group(1, "POINT").words(1, "USED", {3}).words(1, "USED", {5});
    const table_of found(writer);
    EXPECT_EQ(found.table.count("POINT", "USED"), 5U);
    ASSERT_EQ(found.notes.texts().size(), 1U);
    EXPECT_NE(found.notes.texts()[0].find("POINT:USED is repeated"), std::string::npos);
}

TEST(ParameterTable, GroupsOfOneNameAreReadAsOne) {
    parameter_writer writer;
    writer.group(1, "POINT").words(1, "USED", {3}).group(5, "point").words(5, "FRAMES", {9});
    const table_of found(writer);
    EXPECT_EQ(found.table.count("POINT", "USED"), 3U);
    EXPECT_EQ(found.table.count("POINT", "FRAMES"), 9U);
    EXPECT_EQ(found.table.groups()[1].first_of_name, 0U);
    EXPECT_EQ(found.table.groups()[1].id, 5);
}

TEST(ParameterTable, OfGroupsWithOneIdTheNearestBeforeAParameterOwnsIt) {
    parameter_writer writer;
    writer.group(1, "A").words(1, "X", {1}).group(1, "B").words(1, "Y", {2});
    writer.group(2, "C").words(1, "Z", {3});
    const table_of found(writer);
    EXPECT_EQ(found.table.count("A", "X"), 1U);
    EXPECT_EQ(found.table.count("B", "Y"), 2U);
    EXPECT_EQ(found.table.count("A", "Z"), 3U); // the nearest one is C, so the first of the id
}

TEST(ParameterTable, GroupWithoutARecordIsNamedByItsId) {
    parameter_writer writer;
    writer.words(7, "IS_STATIC", {1}).words(7, "USED", {2});
    const table_of found(writer);
    ASSERT_EQ(found.table.groups().size(), 1U);
    EXPECT_EQ(found.table.groups()[0].name, "GROUP_7");
    EXPECT_FALSE(found.table.groups()[0].has_record);
    EXPECT_EQ(found.table.count("GROUP_7", "USED"), 2U);
}

TEST(ParameterTable, PartsGoOnUntilOneIsMissing) {
    parameter_writer writer;
    writer.group(1, "POINT").texts(1, "LABELS", {"A"}, 4).texts(1, "LABELS2", {"B"}, 4);
    writer.texts(1, "LABELS4", {"D"}, 4);
    const table_of found(writer);
    EXPECT_EQ(found.table.parts("POINT", "LABELS").size(), 2U);
    EXPECT_TRUE(found.table.parts("POINT", "DESCRIPTIONS").empty());
}

TEST(ParameterTable, AnyNumericTypeIsANumber) {
    parameter_writer writer;
    writer.group(1, "POINT").reals(1, "USED", {26.0F}).bytes(1, "FRAMES", {200});
    writer.words(1, "RATE", {50}).text(1, "SCALE", "0.1");
    const table_of found(writer);
    EXPECT_EQ(found.table.count("POINT", "USED"), 26U);
    EXPECT_EQ(found.table.count("POINT", "FRAMES"), 200U);
    EXPECT_EQ(found.table.number("POINT", "RATE"), 50.0);
    EXPECT_EQ(found.table.number("POINT", "SCALE"), std::nullopt);
}

TEST(ParameterTable, ArrayOfOneIsAScalar) {
    parameter_writer writer;
    writer.group(1, "POINT").words(1, "USED", {26}, {1}).words(1, "FRAMES", {}, {0});
    const table_of found(writer);
    EXPECT_EQ(found.table.count("POINT", "USED"), 26U);
    EXPECT_EQ(found.table.count("POINT", "FRAMES"), std::nullopt);
}

TEST(ParameterTable, TextIsTheFirstOfAList) {
    parameter_writer writer;
    writer.group(1, "ANALOG").texts(1, "FORMAT", {"UNSIGNED", "SIGNED"}, 10).words(1, "BITS", {12});
    const table_of found(writer);
    EXPECT_EQ(found.table.text("ANALOG", "FORMAT"), "UNSIGNED");
    EXPECT_EQ(found.table.text("ANALOG", "BITS"), "");
    EXPECT_EQ(found.table.text("ANALOG", "NONE"), "");
}

} // namespace
