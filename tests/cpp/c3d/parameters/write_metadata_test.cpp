// What becomes of parameters: kept, changed, made anew.

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "schema/write_attribute.hpp"
#include "tests/cpp/c3d/support/trial.hpp"
#include "tests/cpp/c3d/support/writing.hpp"

namespace {

using c3d_test::change_number;
using c3d_test::new_acquisition;
using c3d_test::opened;
using c3d_test::parameter_writer;
using c3d_test::reading;
using c3d_test::trial;
using c3d_test::write;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto point_parameters = "Format/Metadata/POINT";
constexpr auto analog_records = "Format/Metadata/ANALOG";

trial points_of(const std::vector<std::string>& labels) {
    trial file;
    file.labels = labels;
    file.samples = std::vector<c3d_test::stored_sample>(labels.size(), {1, 2, 3, 0});
    return file;
}

reading written_again(const reading& found) {
    const auto written = write(found.store);
    EXPECT_TRUE(written.status) << written.status.message("\n");
    return opened(written.bytes);
}

strata::data_set set_of(const reading& found, const std::string& path) {
    return found.store.root().retrieve_set("Format/Data/" + path);
}

TEST(WriteMetadata, OthersKeepTypeWidthLockAndDescription) {
    auto file = points_of({"A"});
    file.more_parameters = [](parameter_writer& writer) {
        writer.group(9, "Mine", "a description");
        writer.bytes(9, "One", {200});
        writer.bytes(9, "Some", {1, 255}, {2});
        writer.words(9, "-Locked", {-5, 6}, {1, 2});
        writer.reals(9, "Real", {1.5F}, {1});
        writer.texts(9, "Texts", {"a", "bc"}, 7);
        writer.record(9, "Described", 2, {}, c3d_test::hex("01 00"), "of a parameter");
    };
    const auto before = opened(file.bytes());
    const auto after = written_again(before);
    for (const auto* name : {"Name", "Stored", "Description"}) {
        EXPECT_THAT(after.texts("Format/Header/Parameters", name),
                    testing::IsSupersetOf(before.texts("Format/Header/Parameters", name)));
    }
    const auto last = [](const std::vector<double>& values) {
        return std::vector<double>(values.end() - 6, values.end());
    };
    for (const auto* name : {"Type", "Width", "Locked"}) {
        const auto values = after.numbers("Format/Header/Parameters", name);
        const auto names = after.texts("Format/Header/Parameters", "Name");
        const auto first = std::find(names.begin(), names.end(), "One") - names.begin();
        const std::vector<double> mine(values.begin() + first, values.begin() + first + 6);
        EXPECT_EQ(mine, last(before.numbers("Format/Header/Parameters", name))) << name;
    }
    EXPECT_THAT(after.numbers("Format/Metadata/Mine", "Some"), ElementsAre(1, -1));
    EXPECT_THAT(after.numbers("Format/Metadata/Mine", "One"), ElementsAre(200));
    const auto groups = after.texts("Format/Header/Groups", "Name");
    const auto mine = std::find(groups.begin(), groups.end(), "Mine") - groups.begin();
    EXPECT_EQ(after.numbers("Format/Header/Groups", "Id").at(static_cast<std::size_t>(mine)), 9);
}

TEST(WriteMetadata, IntegersOfAnyWidthBecomeWordsWhereTheyFit) {
    new_acquisition made(1, 50.0);
    auto mine = made.group("Format/Metadata").create_group("MINE");
    schema::write_number(mine, "FITS", std::int32_t{-32768});
    schema::write_number(mine, "LARGE", std::int64_t{70000});
    schema::write_number(mine, "DOUBLE", 0.5);
    const auto found = opened(write(made.store).bytes);
    EXPECT_EQ(found.attribute("Format/Metadata/MINE", "FITS").type(), strata::data_type::int16);
    EXPECT_EQ(found.attribute("Format/Metadata/MINE", "LARGE").type(), strata::data_type::float32);
    EXPECT_THAT(found.numbers("Format/Metadata/MINE", "LARGE"), ElementsAre(70000));
    EXPECT_THAT(found.numbers("Format/Metadata/MINE", "DOUBLE"), ElementsAre(0.5));
}

TEST(WriteMetadata, TextsOfOneByteACharacterGetTheirBytesBack) {
    auto file = points_of({"A"});
    file.more_parameters = [](parameter_writer& writer) {
        writer.record(trial::point, "SQUARE", -1, {5}, c3d_test::hex("6D 6D 2F 73 B2"));
    };
    const auto found = opened(file.bytes());
    EXPECT_THAT(found.texts(point_parameters, "SQUARE"), ElementsAre("mm/s\xC2\xB2"));
    const auto written = write(found.store);
    const auto record = c3d_test::hex("53 51 55 41 52 45 0B 00 FF 01 05 6D 6D 2F 73 B2");
    EXPECT_NE(std::search(written.bytes.begin(), written.bytes.end(), record.begin(), record.end()),
              written.bytes.end());
}

TEST(WriteMetadata, AttributesOfTheMetadataThemselvesAreNone) {
    const auto found = opened(points_of({"A"}).bytes());
    auto metadata = found.store.root().retrieve_group("Format/Metadata");
    schema::write_text(metadata, "DeviceType", "Metadata");
    const auto again = written_again(found);
    EXPECT_FALSE(
        again.store.root().retrieve_group("Format/Metadata").exists_attribute("DeviceType"));
}

TEST(WriteMetadata, ListsOfKindsThatBecameEmptyGo) {
    auto file = points_of({"Knee", "LASI"});
    file.more_parameters = [](parameter_writer& writer) {
        writer.texts(trial::point, "ANGLES", {"Knee"}, 8);
    };
    const auto found = opened(file.bytes());
    found.store.root().retrieve_group("Format/Data/Angles").delete_set("Knee");
    change_number(set_of(found, "Markers/LASI"), "RelativeSetIndex", 0);
    const auto again = written_again(found);
    EXPECT_FALSE(again.attribute(point_parameters, "ANGLES"));
    EXPECT_THAT(again.texts("Format/Data/Points", "Labels"), ElementsAre("LASI"));
}

TEST(WriteMetadata, EntriesOfListsThatNeverMeantAPointStay) {
    auto file = points_of({"Knee", "LASI"});
    file.more_parameters = [](parameter_writer& writer) {
        writer.texts(trial::point, "ANGLES", {"Gone", "Knee"}, 8);
    };
    const auto again = written_again(opened(file.bytes()));
    EXPECT_THAT(again.texts(point_parameters, "ANGLES"), ElementsAre("Gone", "Knee"));
}

TEST(WriteMetadata, AppendedKindsGetTheirListAndUnit) {
    new_acquisition made(1, 50.0);
    made.add_point("Markers", "LASI", {1, 2, 3});
    made.add_point("Angles", "Knee", {1, 2, 3});
    const auto found = opened(write(made.store).bytes);
    EXPECT_THAT(found.texts("Format/Data/Points", "Types"), ElementsAre("marker", "angle"));
    EXPECT_THAT(found.texts(point_parameters, "ANGLE_UNITS"), ElementsAre("deg"));
    EXPECT_THAT(found.texts(point_parameters, "UNITS"), ElementsAre("mm"));
}

TEST(WriteMetadata, ShortListsAreFilledWhenAPointIsAppended) {
    auto file = points_of({"A", "B"});
    file.more_parameters = [](parameter_writer& writer) {
        writer.texts(trial::point, "DESCRIPTIONS", {"of A"}, 8);
    };
    const auto found = opened(file.bytes());
    EXPECT_THAT(written_again(found).texts(point_parameters, "DESCRIPTIONS"), ElementsAre("of A"));
    auto markers = found.store.root().retrieve_group("Format/Data/Markers");
    auto added =
        markers.create_set("C", strata::data_shape({3, 1, 1}, false), strata::data_type::float64);
    schema::write_number(added, "RelativeSetIndex", std::int32_t{2});
    EXPECT_THAT(written_again(found).texts(point_parameters, "DESCRIPTIONS"),
                ElementsAre("of A", "", ""));
}

TEST(WriteMetadata, LabelsTellKindsApart) {
    new_acquisition made(1, 50.0);
    made.add_point("Markers", "Knee", {1, 2, 3});
    made.add_point("Angles", "Knee", {4, 5, 6});
    const auto written = write(made.store);
    const auto found = opened(written.bytes);
    EXPECT_THAT(found.texts("Format/Data/Points", "Labels"), ElementsAre("Knee_2", "Knee"));
    EXPECT_THAT(found.texts("Format/Data/Points", "Types"), ElementsAre("marker", "angle"));
    EXPECT_TRUE(written.warns_about("points of different kinds have the label 'Knee'; that of the "
                                    "kind 'marker' is written as 'Knee_2'"));
}

TEST(WriteMetadata, EqualLabelsOfOneKindStayEqual) {
    const auto again = written_again(opened(points_of({"A", "A"}).bytes()));
    EXPECT_THAT(again.texts("Format/Data/Points", "Labels"), ElementsAre("A", "A"));
}

TEST(WriteMetadata, UnitsThatDifferBecomeTheFirst) {
    new_acquisition made(1, 50.0);
    made.add_point("Markers", "A", {1, 2, 3});
    auto second = made.add_point("Markers", "B", {1, 2, 3});
    second.retrieve_attribute("Unit").write("m");
    auto third = made.add_point("Markers", "C", {1, 2, 3});
    third.retrieve_attribute("Unit").write("cm");
    const auto written = write(made.store);
    EXPECT_THAT(opened(written.bytes).texts(point_parameters, "UNITS"), ElementsAre("m"));
    EXPECT_TRUE(written.warns_about("points of the kind 'marker' have the units 'm' and 'cm'"));
}

TEST(WriteMetadata, PlatformsFollowTheirChannels) {
    auto file = points_of({"LASI"});
    file.analog_labels = {"Fx", "Fy", "Fz"};
    file.analogs = {1, 2, 3};
    file.more_parameters = [](parameter_writer& writer) {
        writer.group(5, "FORCE_PLATFORM");
        writer.words(5, "USED", {1});
        writer.words(5, "CHANNEL", {1, 2, 3, 0, 9}, {5, 1});
    };
    const auto found = opened(file.bytes());
    found.store.root().retrieve_group("Format/Data/AnalogsExport").delete_set("Fx");
    change_number(set_of(found, "AnalogsExport/Fy"), "RelativeSetIndex", 0);
    change_number(set_of(found, "AnalogsExport/Fz"), "RelativeSetIndex", 1);
    const auto again = written_again(found);
    EXPECT_THAT(again.numbers("Format/Metadata/FORCE_PLATFORM", "CHANNEL"),
                ElementsAre(0, 1, 2, 0, 9));
    EXPECT_THAT(again.texts(analog_records, "LABELS"), ElementsAre("Fy", "Fz"));
}

} // namespace
