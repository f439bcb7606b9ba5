#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include <strata/access/append_elements.hpp>

#include "tests/cpp/strata/support/buffers.hpp"

namespace {

using strata::append_elements;
using strata::data_attribute;
using strata::data_store;
using strata::data_type;
using strata::keep_first_elements;
using strata_test::counting;
using strata_test::counting_set;
using strata_test::give;
using strata_test::give_texts;
using strata_test::scalar;
using strata_test::shape;
using strata_test::texts;
using strata_test::type_of;
using strata_test::values;
using strata_test::whole;

using doubles = std::vector<double>;
using names = std::vector<std::string>;

template <typename Value, typename Target>
bool append(const Target& target, const std::vector<Value>& given) {
    return append_elements(target, given.data(), given.size(), type_of<Value>());
}

template <typename Target>
bool append_texts(const Target& target, const std::vector<const char*>& given) {
    return append_elements(target, given.data(), given.size(), data_type::string);
}

data_attribute numbers(const data_store& store, const std::string& name,
                       const std::vector<std::int32_t>& given) {
    auto attribute = store.root().create_attribute(
        name, shape({static_cast<std::int64_t>(given.size())}), data_type::int32);
    give<std::int32_t>(attribute, given);
    return attribute;
}

const std::byte* address_of(const data_attribute& attribute) {
    return strata::share_elements(attribute).data();
}

TEST(AppendedElements, FollowThoseThatAreThere) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {2});
    const auto attribute = numbers(store, "a", {1, 2});
    EXPECT_TRUE(append<double>(set, {7, 8}));
    EXPECT_TRUE(append<std::int32_t>(attribute, {3}));
    EXPECT_EQ(set.shape(false), shape({4}));
    EXPECT_EQ(values<double>(whole(set)), (doubles{0, 1, 7, 8}));
    EXPECT_EQ(values<std::int32_t>(attribute), (std::vector<std::int32_t>{1, 2, 3}));
}

TEST(AppendedElements, MayBeTheFirst) {
    const data_store store;
    auto root = store.root();
    const auto set = root.create_set("s", shape({0}), data_type::float32);
    const auto attribute = root.create_attribute("a", shape({0}), data_type::string);
    EXPECT_TRUE(append<float>(set, {0.5F}));
    EXPECT_TRUE(append_texts(attribute, {"x"}));
    EXPECT_EQ(values<float>(whole(set)), std::vector<float>{0.5F});
    EXPECT_EQ(texts(attribute), names{"x"});
}

TEST(AppendedElements, AreConvertedAsWrittenOnesAre) {
    const data_store store;
    const auto set = store.root().create_set("s", shape({0}), data_type::float32);
    const auto attribute = numbers(store, "a", {});
    EXPECT_TRUE(append<double>(set, {0.1}));
    EXPECT_TRUE(append<double>(attribute, {1e12}));
    EXPECT_EQ(values<double>(whole(set)), doubles{static_cast<double>(0.1F)});
    EXPECT_EQ(values<std::int32_t>(attribute), std::vector<std::int32_t>{2147483647});
}

TEST(AppendedElements, OfTextMayBeEmptyOrLong) {
    const data_store store;
    const auto set = store.root().create_set("s", shape({2}), data_type::string);
    const std::string long_text(100, 'x');
    EXPECT_TRUE(append_texts(set, {"", nullptr}));
    EXPECT_TRUE(append_texts(set, {long_text.c_str(), ""}));
    EXPECT_TRUE(append_texts(set, {"ü"}));
    EXPECT_EQ(texts(whole(set)), (names{"", "", "", "", long_text, "", "ü"}));
}

TEST(AppendedElements, InThousandsAreAllThere) {
    const data_store store;
    const auto set = store.root().create_set("s", shape({0}), data_type::float64);
    for (int i = 0; i < 5000; ++i) {
        ASSERT_TRUE(append<double>(set, {static_cast<double>(i)}));
        if (i % 7 == 3)
            give<double>(strata_test::part(set, {static_cast<std::uint64_t>(i) / 2, 1}), {-1});
    }
    auto expected = counting<double>(5000);
    for (std::size_t i = 3; i < 5000; i += 7)
        expected[i / 2] = -1;
    EXPECT_EQ(values<double>(whole(set)), expected);
}

TEST(AppendedElements, MoveThoseThatAreThereRarely) {
    const data_store store;
    const auto attribute = numbers(store, "a", {});
    const auto* place = address_of(attribute);
    int moves = 0;
    for (std::int32_t i = 0; i < 10'000; ++i) {
        ASSERT_TRUE(append<std::int32_t>(attribute, {i}));
        moves += place != address_of(attribute) ? 1 : 0;
        place = address_of(attribute);
    }
    EXPECT_LE(moves, 20); // 8 × 1.5^18 is more than 10,000
    EXPECT_EQ(values<std::int32_t>(attribute), counting<std::int32_t>(10'000));
}

TEST(AppendedElements, LeaveWhoSharesThem) {
    const data_store store;
    auto root = store.root();
    auto group = root.create_group("g");
    const auto attribute = numbers(store, "a", {1});
    ASSERT_TRUE(append<std::int32_t>(attribute, {2})); // from here on there is room for more
    group.copy_attribute(attribute);
    const auto copy = group.retrieve_attribute("a");
    const auto shared = strata::share_elements(attribute);
    EXPECT_EQ(address_of(attribute), address_of(copy));

    ASSERT_TRUE(append<std::int32_t>(attribute, {3}));
    ASSERT_TRUE(append<std::int32_t>(copy, {-3, -4}));
    ASSERT_TRUE(append<std::int32_t>(attribute, {4}));
    EXPECT_EQ(values<std::int32_t>(attribute), (std::vector<std::int32_t>{1, 2, 3, 4}));
    EXPECT_EQ(values<std::int32_t>(copy), (std::vector<std::int32_t>{1, 2, -3, -4}));
    EXPECT_EQ(shared.count(), 2U);
}

TEST(AppendedElements, LeaveTextsOfACopy) {
    const data_store store;
    auto group = store.root().create_group("g");
    const auto attribute = store.root().create_attribute("a", shape({0}), data_type::string);
    ASSERT_TRUE(append_texts(attribute, {"x", "y"}));
    group.copy_attribute(attribute);
    ASSERT_TRUE(append_texts(attribute, {"z"}));
    EXPECT_EQ(texts(group.retrieve_attribute("a")), (names{"x", "y"}));
    EXPECT_EQ(texts(attribute), (names{"x", "y", "z"}));
}

TEST(AppendedElements, OfALinkedSetShowUnderBothNames) {
    const data_store store;
    auto root = store.root();
    const auto set = counting_set(root, "s", {1});
    ASSERT_TRUE(root.create_hard_link_internal("t", &set));
    EXPECT_TRUE(append<double>(root.retrieve_set("t"), {5}));
    EXPECT_EQ(values<double>(whole(set)), (doubles{0, 5}));
}

TEST(AppendedElements, FollowResizesAndWrites) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {3});
    ASSERT_TRUE(append<double>(set, {3}));
    strata_test::resize(set, {2});
    ASSERT_TRUE(append<double>(set, {9}));
    strata_test::resize(set, {5});
    ASSERT_TRUE(append<double>(set, {10}));
    give<double>(strata_test::part(set, {0, 1}), {-1});
    EXPECT_EQ(values<double>(whole(set)), (doubles{-1, 1, 9, 0, 0, 10}));
}

TEST(AppendedElements, CanBeTakenBack) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {3});
    const auto text = store.root().create_attribute("t", shape({0}), data_type::string);
    ASSERT_TRUE(append<double>(set, {3, 4}));
    ASSERT_TRUE(append_texts(text, {"x", "y"}));
    keep_first_elements(set, 4);
    keep_first_elements(text, 1);
    EXPECT_EQ(values<double>(whole(set)), (doubles{0, 1, 2, 3}));
    EXPECT_EQ(texts(text), names{"x"});
    ASSERT_TRUE(append<double>(set, {9}));
    ASSERT_TRUE(append_texts(text, {"", "z"}));
    EXPECT_EQ(values<double>(whole(set)), (doubles{0, 1, 2, 3, 9}));
    EXPECT_EQ(texts(text), (names{"x", "", "z"}));
}

TEST(AppendedElements, TakenBackStayWithWhoSharesThem) {
    const data_store store;
    const auto attribute = numbers(store, "a", {1, 2, 3});
    auto group = store.root().create_group("g");
    group.copy_attribute(attribute);
    keep_first_elements(attribute, 1);
    ASSERT_TRUE(append<std::int32_t>(attribute, {9, 9}));
    EXPECT_EQ(values<std::int32_t>(group.retrieve_attribute("a")),
              (std::vector<std::int32_t>{1, 2, 3}));
    EXPECT_EQ(values<std::int32_t>(attribute), (std::vector<std::int32_t>{1, 9, 9}));
}

TEST(AppendedElements, OfNoneChangeNothing) {
    const data_store store;
    const auto attribute = numbers(store, "a", {1, 2});
    const auto* place = address_of(attribute);
    EXPECT_TRUE(append<std::int32_t>(attribute, {}));
    EXPECT_EQ(address_of(attribute), place);
    EXPECT_EQ(attribute.shape(), shape({2}));
}

TEST(AppendedElements, NeedOneDimension) {
    const data_store store;
    auto root = store.root();
    const auto flat = counting_set(root, "flat", {2, 1});
    const auto channel = counting_set(root, "channel", {1, 1, 2});
    const auto single = root.create_attribute("single", scalar(), data_type::float64);
    const auto text = root.create_attribute("text", scalar(), data_type::string);
    EXPECT_FALSE(append<double>(flat, {5}));
    EXPECT_FALSE(append<double>(channel, {5}));
    EXPECT_FALSE(append<double>(single, {5}));
    EXPECT_FALSE(append_texts(text, {"x"}));
    keep_first_elements(flat, 1);
    keep_first_elements(single, 0);
    EXPECT_EQ(flat.shape(false), shape({2, 1}));
    EXPECT_EQ(values<double>(whole(channel)), (doubles{0, 1}));
}

TEST(AppendedElements, NeedAConversion) {
    const data_store store;
    auto root = store.root();
    const auto set = counting_set(root, "s", {2});
    const auto text = root.create_set("t", shape({1}), data_type::string);
    const auto none = root.create_set("n", shape({1}), data_type::invalid);
    EXPECT_FALSE(append_texts(set, {"5"}));
    EXPECT_FALSE(append<double>(text, {5}));
    EXPECT_FALSE(append<double>(none, {5}));
    EXPECT_EQ(values<double>(whole(set)), (doubles{0, 1}));
    EXPECT_EQ(texts(whole(text)), names{""});
    EXPECT_EQ(none.shape(false), shape({1}));
}

TEST(AppendedElements, NeedAHandle) {
    const double number = 1.0;
    EXPECT_FALSE(append_elements(strata::data_set{}, &number, 1, data_type::float64));
    EXPECT_FALSE(append_elements(data_attribute{}, &number, 1, data_type::float64));
    keep_first_elements(strata::data_set{}, 0);
    keep_first_elements(data_attribute{}, 0);
}

TEST(AppendedElements, KeepNoMoreThanThereAre) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {2});
    keep_first_elements(set, 3);
    EXPECT_EQ(values<double>(whole(set)), (doubles{0, 1}));
}

} // namespace
