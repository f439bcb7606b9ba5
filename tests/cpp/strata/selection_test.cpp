#include <limits>

#include "tests/cpp/strata/support/values.hpp"

namespace {

using strata::data_selection;
using strata::data_store;
using strata::data_type;
using strata_test::counting_set;
using strata_test::give;
using strata_test::part;
using strata_test::shape;
using strata_test::values;
using strata_test::whole;

using doubles = std::vector<double>;

TEST(Selection, OfNothingIsInvalid) {
    const data_selection nothing;
    double value = 1.0;
    EXPECT_FALSE(nothing);
    EXPECT_FALSE(nothing.read_value(&value, data_type::float64));
    EXPECT_EQ(nothing.type(), data_type::invalid);
    EXPECT_EQ(value, 1.0);
}

TEST(Selection, OfTheWholeHasItsShapeTypeAndOrder) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {2, 2, 3});
    const auto selection = whole(set);
    EXPECT_TRUE(selection);
    EXPECT_EQ(selection.shape(), shape({2, 2, 3}));
    EXPECT_EQ(selection.type(), data_type::float64);
    EXPECT_EQ(values<double>(selection), strata_test::counting<double>(12));
}

TEST(Selection, OfAnotherShapeIsInvalid) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {2, 3});
    EXPECT_FALSE(set.select(shape({3, 2}), false));
    EXPECT_FALSE(set.select(shape({6}), false));
    EXPECT_FALSE(set.select(strata_test::scalar(), false));
    EXPECT_FALSE(set.select(shape({-2, 3}), false));
}

TEST(Selection, OfASingleValueWorks) {
    const data_store store;
    const auto set = store.root().create_set("s", strata_test::scalar(), data_type::int32);
    give<std::int32_t>(whole(set), {5});
    EXPECT_EQ(values<double>(whole(set)), doubles{5});
    EXPECT_EQ(values<double>(part(set, {})), doubles{5});
}

TEST(Selection, OfOneChannelOfManyComponents) {
    const data_store store;
    const auto set =
        counting_set(store.root(), "s", {3, 2, 4}); // value = component * 8 + channel * 4 + sample
    const auto channel = part(set, {0, 3, 1, 1, 0, 4});
    EXPECT_EQ(channel.shape(), shape({3, 1, 4}));
    EXPECT_EQ(values<double>(channel), (doubles{4, 5, 6, 7, 12, 13, 14, 15, 20, 21, 22, 23}));
}

TEST(Selection, OfABoxIsInRowMajorOrder) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {3, 2, 4});
    EXPECT_EQ(values<double>(part(set, {1, 2, 0, 2, 1, 2})),
              (doubles{9, 10, 13, 14, 17, 18, 21, 22}));
}

TEST(Selection, OfEveryBoxOfAFourDimensionalSetIsRight) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {2, 3, 2, 3});
    for (std::uint64_t a = 0; a < 2; ++a) {
        for (std::uint64_t b = 0; b < 3; ++b) {
            for (std::uint64_t extent = 1; extent <= 3 - b; ++extent) {
                doubles expected;
                for (std::uint64_t y = b; y < b + extent; ++y) {
                    for (std::uint64_t z = 0; z < 2; ++z) {
                        for (std::uint64_t x = 1; x < 3; ++x) {
                            expected.push_back(static_cast<double>(a * 18 + y * 6 + z * 3 + x));
                        }
                    }
                }
                EXPECT_EQ(values<double>(part(set, {a, 1, b, extent, 0, 2, 1, 2})), expected);
            }
        }
    }
}

TEST(Selection, OfNoExtentIsValidAndEmpty) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {3, 2, 4});
    const auto empty = part(set, {0, 3, 2, 0, 0, 4});
    EXPECT_TRUE(empty);
    EXPECT_EQ(empty.shape().element_count(), 0U);
    EXPECT_TRUE(empty.read_value(nullptr, data_type::float64));
}

TEST(Selection, BeyondTheSetIsInvalid) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {3, 2, 4});
    EXPECT_FALSE(part(set, {0, 4, 0, 1, 0, 4}));
    EXPECT_FALSE(part(set, {0, 3, 2, 1, 0, 4}));
    EXPECT_FALSE(part(set, {0, 3, 0, 1, 1, 4}));
    EXPECT_FALSE(part(set, {4, 0, 0, 1, 0, 4}));
}

TEST(Selection, OverflowingCoordinatesAreInvalid) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {3, 2, 4});
    constexpr auto most = std::numeric_limits<std::uint64_t>::max();
    EXPECT_FALSE(part(set, {0, 3, 0, 1, most, 2}));
    EXPECT_FALSE(part(set, {0, 3, 0, 1, 2, most}));
    EXPECT_FALSE(part(set, {most - 1, 4, 0, 1, 0, 4}));
}

TEST(Selection, WithAnotherNumberOfCoordinatesIsInvalid) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {3, 2, 4});
    EXPECT_FALSE(part(set, {0, 3, 0, 1}));
    EXPECT_FALSE(part(set, {0, 3, 0, 1, 0, 4, 0}));
    EXPECT_FALSE(part(set, {}));
    EXPECT_FALSE(set.select(nullptr, 6, true));
}

TEST(Selection, WritesOnlyItsBox) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {2, 2, 3});
    give<double>(part(set, {1, 1, 0, 2, 1, 2}), {-1, -2, -3, -4});
    EXPECT_EQ(values<double>(whole(set)), (doubles{0, 1, 2, 3, 4, 5, 6, -1, -2, 9, -3, -4}));
}

TEST(Selection, WritesConverted) {
    const data_store store;
    const auto set = store.root().create_set("s", shape({3}), data_type::int16);
    give<double>(whole(set), {1.9, -40000.0, 40000.0});
    EXPECT_EQ(values<std::int16_t>(whole(set)), (std::vector<std::int16_t>{1, -32768, 32767}));
}

TEST(Selection, ReadsAndWritesSomeTexts) {
    const data_store store;
    const auto set = store.root().create_set("s", shape({2, 1, 3}), data_type::string);
    strata_test::give_texts(part(set, {1, 1, 0, 1, 1, 2}), {"b", "c"});
    EXPECT_EQ(strata_test::texts(whole(set)), (std::vector<std::string>{"", "", "", "", "b", "c"}));
    EXPECT_EQ(strata_test::texts(part(set, {0, 2, 0, 1, 1, 1})),
              (std::vector<std::string>{"", "b"}));
}

TEST(Selection, FollowsWritesAndGrowth) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {1, 1, 3});
    const auto selection = whole(set);
    give<double>(whole(set), {5, 6, 7});
    strata_test::resize(set, {1, 1, 5});
    EXPECT_TRUE(selection);
    EXPECT_EQ(values<double>(selection), (doubles{5, 6, 7}));
}

TEST(Selection, IsInvalidOnceTheSetIsTooSmall) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {1, 1, 3});
    auto selection = whole(set);
    strata_test::resize(set, {1, 1, 2});
    double value = 9.0;
    EXPECT_FALSE(selection);
    EXPECT_FALSE(selection.read_value(&value, data_type::float64));
    EXPECT_FALSE(selection.write_value(&value, data_type::float64));
    EXPECT_EQ(values<double>(whole(set)), (doubles{0, 1}));
}

} // namespace
