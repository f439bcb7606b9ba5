#include "plugins/c3d/points/point_kinds.hpp"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/cpp/c3d/support/parameter_writer.hpp"
#include "tests/cpp/c3d/support/table_of.hpp"

namespace {

using c3d::point_kinds;
using c3d_test::parameter_writer;
using c3d_test::table_of;

TEST(PointKinds, ListedLabelsHaveTheirKind) {
    parameter_writer writer;
    writer.group(1, "POINT").texts(1, "ANGLES", {"LKneeAngles"}, 20);
    writer.texts(1, "FORCES", {"LKneeForce"}, 20).texts(1, "MOMENTS", {"LKneeMoment"}, 20);
    writer.texts(1, "POWERS", {"LKneePower"}, 20).texts(1, "SCALARS", {"Height"}, 20);
    const table_of found(writer);
    const point_kinds kinds(found.table);
    EXPECT_EQ(kinds.type_of("LKneeAngles"), "angle");
    EXPECT_EQ(kinds.type_of("LKneeForce"), "force");
    EXPECT_EQ(kinds.type_of("LKneeMoment"), "moment");
    EXPECT_EQ(kinds.type_of("LKneePower"), "power");
    EXPECT_EQ(kinds.type_of("LASI"), "marker");
    EXPECT_EQ(kinds.type_of("Height"), "marker"); // scalars are kept as markers, not dropped
    EXPECT_EQ(kinds.type_of(""), "marker");
}

TEST(PointKinds, ListsGoOnInNumberedParameters) {
    parameter_writer writer;
    writer.group(1, "POINT").texts(1, "ANGLES", std::vector<std::string>(255, "A"), 4);
    writer.texts(1, "ANGLES2", {"B"}, 4);
    const table_of found(writer);
    EXPECT_EQ(point_kinds(found.table).type_of("B"), "angle");
}

TEST(PointKinds, UnitsAreThoseOfTheKind) {
    parameter_writer writer;
    writer.group(1, "POINT").text(1, "UNITS", "m").text(1, "ANGLE_UNITS", "rad");
    writer.texts(1, "ANGLES", {"K"}, 4).texts(1, "POWERS", {"P"}, 4);
    const table_of found(writer);
    const point_kinds kinds(found.table);
    EXPECT_EQ(kinds.unit_of(0, "LASI"), "m");
    EXPECT_EQ(kinds.unit_of(1, "K"), "rad");
    EXPECT_EQ(kinds.unit_of(2, "P"), "W");
}

TEST(PointKinds, MissingUnitsAreTheUsualOnes) {
    parameter_writer writer;
    writer.group(1, "POINT").texts(1, "ANGLES", {"A"}, 1).texts(1, "FORCES", {"F"}, 1);
    writer.texts(1, "MOMENTS", {"M"}, 1);
    const table_of found(writer);
    const point_kinds kinds(found.table);
    EXPECT_EQ(kinds.unit_of(0, "LASI"), "mm");
    EXPECT_EQ(kinds.unit_of(0, "A"), "deg");
    EXPECT_EQ(kinds.unit_of(0, "F"), "N");
    EXPECT_EQ(kinds.unit_of(0, "M"), "Nmm");
}

TEST(PointKinds, EqualUnitsForEachPointAreTheUnitOfTheMarkers) {
    parameter_writer writer;
    writer.group(1, "POINT").texts(1, "UNITS", {"mm", "mm"}, 4).texts(1, "ANGLES", {"K"}, 4);
    const table_of found(writer);
    const point_kinds kinds(found.table);
    EXPECT_EQ(kinds.unit_of(5, "LASI"), "mm");
    EXPECT_EQ(kinds.unit_of(1, "K"), "deg");
}

TEST(PointKinds, DifferentUnitsForEachPointAreTheirs) {
    parameter_writer writer;
    writer.group(1, "POINT").texts(1, "UNITS", {"mm", "rad"}, 4).texts(1, "ANGLES", {"K"}, 4);
    const table_of found(writer);
    const point_kinds kinds(found.table);
    EXPECT_EQ(kinds.unit_of(0, "LASI"), "mm");
    EXPECT_EQ(kinds.unit_of(1, "K"), "rad");
    EXPECT_EQ(kinds.unit_of(2, "RASI"), "mm");
}

} // namespace
