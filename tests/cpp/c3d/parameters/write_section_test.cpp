#include "plugins/c3d/parameters/write_section.hpp"

#include <array>
#include <cstdint>
#include <initializer_list>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "plugins/c3d/parameters/parameter_values.hpp"
#include "tests/cpp/c3d/support/bytes.hpp"

namespace {

using c3d::parameter_tree;
using c3d::section_bytes;
using c3d::written_group;
using c3d_test::byte_vector;
using c3d_test::hex;

written_group& add_group(parameter_tree& tree, const std::string& name) { return tree.reach(name); }

byte_vector first_bytes(const byte_vector& bytes, std::size_t count) {
    return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count)};
}

std::string refusal(const parameter_tree& tree) {
    try {
        (void)section_bytes(tree, {});
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "";
}

TEST(WriteSection, WithoutParametersIsAHead) {
    const auto bytes = section_bytes({}, {});
    EXPECT_EQ(bytes.size(), 512U);
    EXPECT_EQ(first_bytes(bytes, 8), hex("01 50 01 54 00 00 00 00"));
}

TEST(WriteSection, AreThoseOfTheFormat) {
    parameter_tree tree;
    auto& point = add_group(tree, "POINT");
    auto& used = point.reach("USED");
    used.locked = true;
    c3d::set_words(used, std::array<std::int64_t, 1>{1}, {});
    auto& scale = point.reach("SCALE");
    scale.locked = true;
    c3d::set_reals(scale, std::array{-0.1F}, {});
    const std::array<std::string, 1> label = {"LASI"};
    c3d::set_texts(point.reach("LABELS"), {"POINT", "LABELS"}, label,
                   std::array<std::int64_t, 1>{1}, {4});
    auto& platforms = add_group(tree, "FORCE_PLATFORM");
    c3d::set_words(platforms.reach("USED"), std::array<std::int64_t, 1>{0}, {});

    const auto expected = hex("01 50 01 54"
                              "05 FF 50 4F 49 4E 54 03 00 00"
                              "FC 01 55 53 45 44 07 00 02 00 01 00 00"
                              "FB 01 53 43 41 4C 45 09 00 04 00 CD CC CC BD 00"
                              "06 01 4C 41 42 45 4C 53 0B 00 FF 02 04 01 4C 41 53 49 00"
                              "0E FE 46 4F 52 43 45 5F 50 4C 41 54 46 4F 52 4D 03 00 00"
                              "04 02 55 53 45 44 00 00 02 00 00 00 00");
    EXPECT_EQ(first_bytes(section_bytes(tree, {}), expected.size()), expected);
}

TEST(WriteSection, HoldDescriptions) {
    parameter_tree tree;
    add_group(tree, "POINT").description = "3D";
    EXPECT_EQ(first_bytes(section_bytes(tree, {}), 16),
              hex("01 50 01 54 05 FF 50 4F 49 4E 54 00 00 02 33 44"));
}

TEST(WriteSection, KeepTheMarkOfTheFileThatWasRead) {
    EXPECT_EQ(first_bytes(section_bytes({}, {0, 0}), 4), hex("00 00 01 54"));
    EXPECT_EQ(first_bytes(section_bytes({}, {0, 0}, c3d::number_format::mips), 4),
              hex("00 00 01 56"));
}

TEST(WriteSection, EndInFourZeros) {
    for (std::size_t length = 470; length < 500; ++length) {
        parameter_tree tree;
        auto& group = add_group(tree, "G");
        const std::vector<std::int64_t> ones(length - 240, 1);
        c3d::set_bytes(group.reach("A"), std::vector<std::int64_t>(240, 1), {240});
        c3d::set_bytes(group.reach("B"), ones, {static_cast<std::uint8_t>(ones.size())});
        const auto bytes = section_bytes(tree, {});
        EXPECT_EQ(bytes.size() % 512, 0U);
        EXPECT_EQ(byte_vector(bytes.end() - 4, bytes.end()), hex("00 00 00 00")) << length;
    }
}

TEST(WriteSection, TakeAtMost255Blocks) {
    parameter_tree tree;
    auto& group = add_group(tree, "BIG");
    for (int i = 0; i < 2; ++i) {
        c3d::set_bytes(group.reach("X" + std::to_string(i)), std::vector<std::int64_t>(65025, 0),
                       {255, 255});
    }
    EXPECT_EQ(section_bytes(tree, {}).size(), 255U * 512U);
    c3d::set_bytes(group.reach("Y"), std::vector<std::int64_t>(600, 0), {200, 3});
    EXPECT_EQ(refusal(tree), "the parameters take 256 blocks of 512 bytes; a C3D file holds 255");
}

TEST(WriteSection, TextsCanBeNarrowed) {
    parameter_tree tree;
    const std::array<std::string, 2> texts = {"ab", "c"};
    c3d::set_texts(add_group(tree, "G").reach("T"), {"G", "T"}, texts,
                   std::array<std::int64_t, 1>{2}, {200});
    c3d::narrow_texts(tree);
    EXPECT_EQ(first_bytes(section_bytes(tree, {}), 25),
              hex("01 50 01 54 01 FF 47 03 00 00 01 01 54 00 00 FF 02 02 02 61 62 63 20 00 00"));
}

TEST(WriteSection, AreAsManyAsTheBlocksThatAreForetold) {
    parameter_tree tree;
    auto& group = add_group(tree, "GROUP");
    group.description = "described";
    for (int i = 0; i < 40; ++i) {
        auto& item = group.reach("P" + std::to_string(i));
        item.description = std::string(static_cast<std::size_t>(i), 'd');
        c3d::set_words(item, std::vector<std::int64_t>(30, i), {5, 6});
        EXPECT_EQ(section_bytes(tree, {}).size(), 512 * c3d::section_blocks(tree));
    }
}

TEST(WriteSection, RefuseAParameterThatIsTooLarge) {
    parameter_tree tree;
    c3d::set_words(add_group(tree, "BIG").reach("X"), std::vector<std::int64_t>(40000, 0),
                   {200, 200});
    EXPECT_EQ(refusal(tree), "the parameter BIG:X takes 80007 bytes; a C3D file holds 65535 bytes "
                             "for one");
}

TEST(WriteSection, RefuseALongName) {
    parameter_tree tree;
    const std::string name(128, 'N');
    c3d::set_words(add_group(tree, "G").reach(name), std::array<std::int64_t, 1>{0}, {});
    EXPECT_EQ(refusal(tree),
              "the name of the parameter G:" + name + " has 128 bytes; a C3D file holds 127");
}

TEST(WriteSection, RefuseALongDescription) {
    parameter_tree tree;
    add_group(tree, "G").description = std::string(256, 'd');
    EXPECT_EQ(refusal(tree), "the description of the group G has 256 bytes; a C3D file holds 255");
}

TEST(WriteSection, RefuseANameThatNoReaderFinds) {
    parameter_tree tree;
    c3d::set_words(add_group(tree, "G").reach(" "), std::array<std::int64_t, 1>{0}, {});
    EXPECT_EQ(refusal(tree), "the parameter G:  has a name that no C3D file can hold: empty, or "
                             "with control characters");
}

TEST(ParameterTree, HasAtMost127Groups) {
    parameter_tree tree;
    for (int i = 1; i <= 127; ++i)
        EXPECT_EQ(tree.reach("G" + std::to_string(i)).id, i);
    try {
        tree.reach("ONE_MORE");
        FAIL();
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(),
                     "the group 'ONE_MORE' is one too many: a C3D file has at most 127 groups");
    }
}

TEST(ParameterTree, KeepsIdsThatAreFree) {
    parameter_tree tree;
    for (const std::uint8_t id : std::initializer_list<std::uint8_t>{9, 2, 9}) {
        written_group group;
        group.name = "G" + std::to_string(tree.groups().size());
        group.id = id;
        tree.add(group);
    }
    EXPECT_EQ(tree.groups()[0].id, 9);
    EXPECT_EQ(tree.groups()[1].id, 2);
    EXPECT_EQ(tree.groups()[2].id, 1);
}

} // namespace
