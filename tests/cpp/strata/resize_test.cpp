#include "tests/cpp/strata/support/values.hpp"

namespace {

using strata::data_store;
using strata::data_type;
using strata_test::counting_set;
using strata_test::give_texts;
using strata_test::refusal;
using strata_test::resize;
using strata_test::shape;
using strata_test::values;
using strata_test::whole;

using doubles = std::vector<double>;

TEST(Resize, KeepsElementsAtTheirCoordinatesWhenSamplesAreAdded) {
    const data_store store;
    auto set = counting_set(store.root(), "s", {2, 2, 2}); // component * 4 + channel * 2 + sample
    resize(set, {2, 2, 3});
    EXPECT_EQ(set.shape(false), shape({2, 2, 3}));
    EXPECT_EQ(set.type(), data_type::float64);
    EXPECT_EQ(values<double>(whole(set)), (doubles{0, 1, 0, 2, 3, 0, 4, 5, 0, 6, 7, 0}));
}

TEST(Resize, DropsSamples) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {2, 2, 3});
    resize(set, {2, 2, 1});
    EXPECT_EQ(values<double>(whole(set)), (doubles{0, 3, 6, 9}));
}

TEST(Resize, AddsAndDropsChannels) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {2, 2, 2});
    resize(set, {2, 3, 2});
    EXPECT_EQ(values<double>(whole(set)), (doubles{0, 1, 2, 3, 0, 0, 4, 5, 6, 7, 0, 0}));
    resize(set, {2, 1, 2});
    EXPECT_EQ(values<double>(whole(set)), (doubles{0, 1, 4, 5}));
}

TEST(Resize, AddsAndDropsComponents) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {2, 1, 2});
    resize(set, {3, 1, 2});
    EXPECT_EQ(values<double>(whole(set)), (doubles{0, 1, 2, 3, 0, 0}));
    resize(set, {1, 1, 2});
    EXPECT_EQ(values<double>(whole(set)), (doubles{0, 1}));
}

TEST(Resize, GrownAgainShowsZerosNotFormerValues) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {1, 1, 4});
    resize(set, {1, 1, 1});
    resize(set, {1, 1, 4});
    EXPECT_EQ(values<double>(whole(set)), (doubles{0, 0, 0, 0}));
}

TEST(Resize, FromAndToNothing) {
    const data_store store;
    auto set = store.root().create_set("s", shape({3, 1, 0}), data_type::float64);
    resize(set, {3, 1, 2});
    strata_test::give<double>(whole(set), strata_test::counting<double>(6));
    resize(set, {3, 1, 0});
    EXPECT_EQ(values<double>(whole(set)), doubles{});
    resize(set, {3, 1, 1});
    EXPECT_EQ(values<double>(whole(set)), (doubles{0, 0, 0}));
}

TEST(Resize, KeepsTheOrderWhenTheNumberOfDimensionsChanges) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {2, 3});
    resize(set, {4});
    EXPECT_EQ(values<double>(whole(set)), (doubles{0, 1, 2, 3}));
    resize(set, {2, 1, 3});
    EXPECT_EQ(values<double>(whole(set)), (doubles{0, 1, 2, 3, 0, 0}));
    resize(set, {3, 2, 1});
    resize(set, {6});
    EXPECT_EQ(values<double>(whole(set)), (doubles{0, 0, 3, 0, 0, 0}));
}

TEST(Resize, ToOneValueKeepsTheFirst) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {3});
    strata_test::give<double>(whole(set), {7, 8, 9});
    resize(set, {});
    EXPECT_EQ(set.shape(false), strata_test::scalar());
    EXPECT_EQ(values<double>(whole(set)), doubles{7});
}

TEST(Resize, KeepsTexts) {
    const data_store store;
    const auto set = store.root().create_set("s", shape({2, 2}), data_type::string);
    give_texts(whole(set), {"a", "b", "c", "d"});
    resize(set, {3, 3});
    EXPECT_EQ(strata_test::texts(whole(set)),
              (std::vector<std::string>{"a", "b", "", "c", "d", "", "", "", ""}));
    resize(set, {1, 2});
    EXPECT_EQ(strata_test::texts(whole(set)), (std::vector<std::string>{"a", "b"}));
    resize(set, {4});
    EXPECT_EQ(strata_test::texts(whole(set)), (std::vector<std::string>{"a", "b", "", ""}));
}

TEST(Resize, KeepsAttributes) {
    const data_store store;
    auto set = counting_set(store.root(), "s", {3});
    set.create_attribute("Unit", strata_test::scalar(), data_type::string).write("N");
    resize(set, {9});
    EXPECT_EQ(strata_test::texts(set.retrieve_attribute("Unit")), std::vector<std::string>{"N"});
}

TEST(Resize, OfATypeWithoutElementsChangesTheShape) {
    const data_store store;
    auto set = store.root().create_set("s", shape({2}), data_type::invalid);
    resize(set, {2, 3, 4});
    EXPECT_EQ(set.shape(false), shape({2, 3, 4}));
}

TEST(Resize, RefusedExtentChangesNothing) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {2});
    EXPECT_EQ(refusal([&] { resize(set, {std::uint64_t{1} << 63}); }),
              "A shape has more elements than can be addressed");
    EXPECT_EQ(refusal([&] { resize(set, std::vector<std::uint64_t>(9, 1)); }),
              "A shape has at most 8 dimensions, not 9");
    EXPECT_EQ(values<double>(whole(set)), (doubles{0, 1}));
}

TEST(Resize, WithoutMemoryChangesNothing) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {1, 1, 2});
    EXPECT_THROW(resize(set, {1, 1, std::uint64_t{1} << 50}), std::bad_alloc);
    EXPECT_EQ(values<double>(whole(set)), (doubles{0, 1}));
}

} // namespace
