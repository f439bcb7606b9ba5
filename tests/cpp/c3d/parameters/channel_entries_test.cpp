#include "plugins/c3d/parameters/channel_entries.hpp"

#include <string>
#include <vector>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "tests/cpp/c3d/support/parameter_writer.hpp"
#include "tests/cpp/c3d/support/table_of.hpp"

namespace {

using c3d::channel_entries;
using c3d::single_value;
using c3d_test::parameter_writer;
using c3d_test::table_of;

std::vector<std::string> names(int first, int count) {
    std::vector<std::string> result;
    for (int i = 0; i < count; ++i)
        result.push_back(fmt::format("C{}", first + i));
    return result;
}

TEST(ChannelEntries, ListGoesOnInNumberedParameters) {
    parameter_writer writer;
    writer.group(1, "POINT").texts(1, "LABELS", names(0, 255), 4);
    writer.texts(1, "LABELS2", names(255, 255), 4).texts(1, "LABELS3", names(510, 2), 4);
    const table_of found(writer);
    const channel_entries labels(found.table, "POINT", "LABELS");
    EXPECT_EQ(labels.text(254), "C254");
    EXPECT_EQ(labels.text(255), "C255");
    EXPECT_EQ(labels.text(511), "C511");
    EXPECT_EQ(labels.text(512), std::nullopt);
}

TEST(ChannelEntries, PartsAreInStepWithTheLabels) {
    // The writer split after three labels, and gave scales for fewer channels than that.
    parameter_writer writer;
    writer.group(1, "ANALOG")
        .texts(1, "LABELS", names(0, 3), 4)
        .texts(1, "LABELS2", names(3, 2), 4);
    writer.reals(1, "SCALE", {1, 2}, {2}).reals(1, "SCALE2", {4, 5}, {2});
    const table_of found(writer);
    const channel_entries scales(found.table, "ANALOG", "SCALE");
    EXPECT_EQ(scales.number(1), 2.0);
    EXPECT_EQ(scales.number(2), std::nullopt);
    EXPECT_EQ(scales.number(3), 4.0);
    EXPECT_EQ(scales.number(4), 5.0);
}

TEST(ChannelEntries, WithoutFurtherLabelsAPartHolds255) {
    parameter_writer writer;
    writer.group(1, "ANALOG").reals(1, "SCALE", {1, 2}, {2}).reals(1, "SCALE2", {4, 5}, {2});
    const table_of found(writer);
    const channel_entries scales(found.table, "ANALOG", "SCALE");
    EXPECT_EQ(scales.number(2), std::nullopt);
    EXPECT_EQ(scales.number(255), 4.0);
}

TEST(ChannelEntries, SingleValueIsOfTheFirstChannelOrOfAll) {
    parameter_writer writer;
    writer.group(1, "ANALOG").reals(1, "SCALE", {0.5F}).text(1, "UNITS", "V");
    const table_of found(writer);
    EXPECT_EQ(channel_entries(found.table, "ANALOG", "SCALE").number(1), std::nullopt);
    const channel_entries scales(found.table, "ANALOG", "SCALE", single_value::of_all_channels);
    EXPECT_EQ(scales.number(7), 0.5);
    const channel_entries units(found.table, "ANALOG", "UNITS", single_value::of_all_channels);
    EXPECT_EQ(units.text(7), "V");
}

TEST(ChannelEntries, ListOfOneIsNotASingleValue) {
    parameter_writer writer;
    writer.group(1, "ANALOG").texts(1, "UNITS", {"V"}, 4);
    const table_of found(writer);
    const channel_entries units(found.table, "ANALOG", "UNITS", single_value::of_all_channels);
    EXPECT_EQ(units.text(1), std::nullopt);
}

TEST(ChannelEntries, WidthZeroMeansThatAllAreEmpty) {
    parameter_writer writer;
    writer.group(1, "POINT").record(1, "DESCRIPTIONS", -1, {0, 54}, {});
    const table_of found(writer);
    const channel_entries descriptions(found.table, "POINT", "DESCRIPTIONS");
    EXPECT_EQ(descriptions.text(53), "");
    EXPECT_EQ(descriptions.text(54), std::nullopt);
}

TEST(ChannelEntries, WordsKeepTheirSign) {
    parameter_writer writer;
    writer.group(1, "ANALOG").words(1, "OFFSET", {-32768, 12}, {2}).reals(1, "SCALE", {2}, {1});
    const table_of found(writer);
    const channel_entries offsets(found.table, "ANALOG", "OFFSET");
    EXPECT_EQ(offsets.word(0), -32768);
    EXPECT_EQ(offsets.word(1), 12);
    EXPECT_EQ(channel_entries(found.table, "ANALOG", "SCALE").word(0), std::nullopt);
}

} // namespace
