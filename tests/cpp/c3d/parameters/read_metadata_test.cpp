#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/cpp/c3d/support/reading.hpp"
#include "tests/cpp/c3d/support/trial.hpp"

namespace {

using c3d_test::parameter_writer;
using c3d_test::reading;
using c3d_test::trial;
using strata::data_type;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto mine_path = "Format/Metadata/MINE";

/// A trial with more parameters, in a group of their own.
reading read_mine(const std::function<void(parameter_writer&)>& parameters) {
    trial file;
    file.more_parameters = [&](parameter_writer& writer) {
        writer.group(9, "MINE");
        parameters(writer);
    };
    auto found = c3d_test::read(file.bytes());
    EXPECT_TRUE(found.status) << found.status.message(" ");
    return found;
}

TEST(ReadMetadata, EveryTypeHasItsElementType) {
    const auto found = read_mine([](auto& writer) {
        writer.words(9, "WORD", {-5, 6}, {2})
            .reals(9, "REAL", {0.25F})
            .bytes(9, "BYTE", {1, 255}, {2});
        writer.text(9, "TEXT", "abc  ");
    });
    EXPECT_EQ(found.attribute(mine_path, "WORD").type(), data_type::int16);
    EXPECT_EQ(found.attribute(mine_path, "REAL").type(), data_type::float32);
    EXPECT_EQ(found.attribute(mine_path, "BYTE").type(), data_type::int8);
    EXPECT_EQ(found.attribute(mine_path, "TEXT").type(), data_type::string);
    EXPECT_THAT(found.numbers(mine_path, "WORD"), ElementsAre(-5, 6));
    EXPECT_THAT(found.numbers(mine_path, "REAL"), ElementsAre(0.25));
    EXPECT_THAT(found.numbers(mine_path, "BYTE"), ElementsAre(1, -1));
    EXPECT_THAT(found.texts(mine_path, "TEXT"), ElementsAre("abc"));
}

TEST(ReadMetadata, ShapesAreTheDimensionsInReverse) {
    std::vector<int> values(3 * 4 * 2);
    for (int i = 0; i < 24; ++i)
        values[static_cast<std::size_t>(i)] = i;
    const auto found = read_mine([&](auto& writer) {
        writer.words(9, "CORNERS", values, {3, 4, 2})
            .words(9, "ONE", {1})
            .words(9, "ARRAY", {1}, {1});
    });
    EXPECT_THAT(found.attribute(mine_path, "CORNERS").shape().dimensions(), ElementsAre(2, 4, 3));
    EXPECT_EQ(found.numbers(mine_path, "CORNERS")[23], 23.0);
    EXPECT_THAT(found.attribute(mine_path, "ONE").shape().dimensions(), IsEmpty());
    EXPECT_THAT(found.attribute(mine_path, "ARRAY").shape().dimensions(), ElementsAre(1));
}

TEST(ReadMetadata, SevenDimensionsAreKept) {
    const auto found = read_mine(
        [](auto& writer) { writer.words(9, "DEEP", {1, 2, 3, 4, 5, 6}, {1, 2, 1, 3, 1, 1, 1}); });
    EXPECT_THAT(found.attribute(mine_path, "DEEP").shape().dimensions(),
                ElementsAre(1, 1, 1, 3, 1, 2, 1));
}

TEST(ReadMetadata, TextsLoseTheirWidth) {
    const auto found = read_mine([](auto& writer) {
        writer.texts(9, "LIST", {"a", "bb"}, 4);
        writer.record(9, "TABLE", -1, {2, 2, 3}, c3d_test::characters("a b c d e f "));
    });
    EXPECT_THAT(found.attribute(mine_path, "LIST").shape().dimensions(), ElementsAre(2));
    EXPECT_THAT(found.texts(mine_path, "LIST"), ElementsAre("a", "bb"));
    EXPECT_THAT(found.attribute(mine_path, "TABLE").shape().dimensions(), ElementsAre(3, 2));
    EXPECT_THAT(found.texts(mine_path, "TABLE"), ElementsAre("a", "b", "c", "d", "e", "f"));
}

TEST(ReadMetadata, EmptyParametersKeepTheirZeros) {
    const auto found = read_mine([](auto& writer) {
        writer.texts(9, "TEXTS", {}, 32).words(9, "WORDS", {}, {3, 0});
        writer.record(9, "WIDTH", -1, {0, 3}, {});
    });
    EXPECT_THAT(found.attribute(mine_path, "TEXTS").shape().dimensions(), ElementsAre(0));
    EXPECT_THAT(found.attribute(mine_path, "WORDS").shape().dimensions(), ElementsAre(0, 3));
    EXPECT_THAT(found.texts(mine_path, "WIDTH"), ElementsAre("", "", ""));
}

TEST(ReadMetadata, SingleByteIsACountAndAWord) {
    const auto found = read_mine(
        [](auto& writer) { writer.bytes(9, "SCALAR", {200}).bytes(9, "ARRAY", {200}, {1, 1}); });
    EXPECT_EQ(found.attribute(mine_path, "SCALAR").type(), data_type::int16);
    EXPECT_THAT(found.numbers(mine_path, "SCALAR"), ElementsAre(200));
    EXPECT_EQ(found.attribute(mine_path, "ARRAY").type(), data_type::int16);
    EXPECT_THAT(found.attribute(mine_path, "ARRAY").shape().dimensions(), ElementsAre(1, 1));
}

TEST(ReadMetadata, TextsAreCutAtNulAndDecoded) {
    const auto found = read_mine([](auto& writer) {
        writer.texts(9, "UNITS", {std::string("mm\0x", 4), "mm/s\xB2", "m\xC2\xB2", " a \x81"}, 8);
    });
    EXPECT_THAT(found.texts(mine_path, "UNITS"),
                ElementsAre("mm", "mm/s\xC2\xB2", "m\xC2\xB2", " a \x81"));
}

TEST(ReadMetadata, NamesCanStandInAPath) {
    const auto found = read_mine([](auto& writer) {
        writer.words(9, "L/R", {1}).words(9, "L\\R", {2}).words(9, "Splines Fitted", {3});
        writer.group(10, "A/B").words(10, "X", {4});
    });
    EXPECT_THAT(found.numbers(mine_path, "L_R"), ElementsAre(1));
    EXPECT_THAT(found.numbers(mine_path, "L_R_2"), ElementsAre(2));
    EXPECT_THAT(found.numbers(mine_path, "Splines Fitted"), ElementsAre(3));
    EXPECT_THAT(found.numbers("Format/Metadata/A_B", "X"), ElementsAre(4));
}

TEST(ReadMetadata, NamesThatTheFormatDefinesAreSpelledAsItDoes) {
    const auto found = read_mine([](auto& writer) {
        writer.group(10, "Force_Platform").words(10, "Used", {2}).words(10, "Own", {3});
        writer.words(9, "Used", {1});
    });
    EXPECT_THAT(found.numbers("Format/Metadata/FORCE_PLATFORM", "USED"), ElementsAre(2));
    EXPECT_THAT(found.numbers("Format/Metadata/FORCE_PLATFORM", "Own"), ElementsAre(3));
    EXPECT_THAT(found.numbers(mine_path, "Used"), ElementsAre(1));
}

TEST(ReadMetadata, GroupsOfOneNameAreOne) {
    const auto found = read_mine([](auto& writer) {
        writer.words(9, "X", {1}).group(10, "MINE").words(10, "Y", {2}).words(10, "X", {3});
    });
    EXPECT_THAT(found.numbers(mine_path, "X"), ElementsAre(3));
    EXPECT_THAT(found.numbers(mine_path, "Y"), ElementsAre(2));
    EXPECT_TRUE(found.warns_about("there are several groups 'MINE'"));
}

TEST(ReadMetadata, GroupsAndParametersAreInTheOrderOfTheFile) {
    const auto found = read_mine([](auto& writer) {
        writer.words(9, "B", {1}).words(9, "A", {1}).group(10, "FIRST").words(9, "C", {1});
    });
    const auto root = found.store.root();
    EXPECT_THAT(root.retrieve_group("Format/Metadata").list_group_children_name(),
                ElementsAre("POINT", "ANALOG", "MINE", "FIRST"));
    EXPECT_THAT(root.retrieve_group(mine_path).list_attributes_name(), ElementsAre("B", "A", "C"));
}

TEST(ReadMetadata, UndefinedGroupIsNamedByItsId) {
    const auto found = read_mine([](auto& writer) { writer.words(77, "X", {1}); });
    EXPECT_THAT(found.numbers("Format/Metadata/GROUP_77", "X"), ElementsAre(1));
}

TEST(ReadMetadata, ParameterGroupWithoutParametersIsThere) {
    const auto found = read_mine([](auto&) {});
    EXPECT_TRUE(found.store.root().exists_group(mine_path));
}

} // namespace
