#include "schema/point_kind_table.hpp"

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using schema::point_kind;
using schema::point_kind_table;

TEST(PointKindTable, IsInTheOrderOfWordsAndOfGroups) {
    EXPECT_TRUE(std::ranges::is_sorted(point_kind_table, {}, &point_kind::word));
    EXPECT_TRUE(std::ranges::is_sorted(point_kind_table, {}, &point_kind::group_name));
    EXPECT_TRUE(std::ranges::is_sorted(point_kind_table, {}, &point_kind::path));
}

TEST(PointKindTable, PathsLeadToTheGroupsBelowData) {
    for (const auto& kind : point_kind_table)
        EXPECT_EQ(kind.path, std::string("Format/Data/").append(kind.group_name));
}

TEST(PointKindTable, FilesHaveMarkersFirstAndTheOthersInOrder) {
    std::vector<std::string_view> units;
    for (const auto* kind : schema::point_kinds_in_files)
        units.push_back(kind->unit_parameter);
    EXPECT_EQ(units, (std::vector<std::string_view>{"UNITS", "ANGLE_UNITS", "FORCE_UNITS",
                                                    "MOMENT_UNITS", "POWER_UNITS"}));
}

TEST(PointKindTable, MarkersAreThePointsThatNoFileLists) {
    EXPECT_EQ(schema::marker_kind.word, "marker");
    for (const auto& kind : point_kind_table)
        EXPECT_EQ(kind.list_parameter.empty(), &kind == &schema::marker_kind) << kind.word;
}

} // namespace
