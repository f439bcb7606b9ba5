#include <strata/access/draft_set.hpp>
#include <strata/access/same_set.hpp>

#include "tests/cpp/strata/support/buffers.hpp"

namespace {

using strata::data_set;
using strata::data_store;
using strata::data_type;
using strata::draft_of;
using strata::exchange_content;
using strata_test::counting_set;
using strata_test::give;
using strata_test::refusal;
using strata_test::scalar;
using strata_test::shape;
using strata_test::texts;
using strata_test::values;
using strata_test::whole;

using doubles = std::vector<double>;
using names = std::vector<std::string>;

data_set described_set(const data_store& store) {
    auto set = counting_set(store.root(), "s", {2});
    set.create_attribute("Unit", scalar(), data_type::string).write("s");
    give<std::int32_t>(set.create_attribute("Icons", shape({2}), data_type::int32), {1, 2});
    return set;
}

void change(data_set set) {
    strata_test::resize(set, {3});
    give<double>(whole(set), {7, 8, 9});
    set.retrieve_attribute("Unit").write("ms");
    set.delete_attribute("Icons");
    set.create_attribute("New", scalar(), data_type::int8);
}

void expect_unchanged(const data_set& set) {
    EXPECT_EQ(values<double>(whole(set)), (doubles{0, 1}));
    EXPECT_EQ(set.list_attributes_name(), (names{"Unit", "Icons"}));
    EXPECT_EQ(texts(set.retrieve_attribute("Unit")), names{"s"});
    EXPECT_EQ(values<std::int32_t>(set.retrieve_attribute("Icons")),
              (std::vector<std::int32_t>{1, 2}));
}

void expect_changed(const data_set& set) {
    EXPECT_EQ(values<double>(whole(set)), (doubles{7, 8, 9}));
    EXPECT_EQ(set.list_attributes_name(), (names{"Unit", "New"}));
    EXPECT_EQ(texts(set.retrieve_attribute("Unit")), names{"ms"});
}

TEST(Draft, IsLikeItsSetAndBelongsToNoGroup) {
    const data_store store;
    const auto set = described_set(store);
    const auto draft = draft_of(set);
    expect_unchanged(draft);
    EXPECT_EQ(draft.name(), "s");
    EXPECT_FALSE(same_set(set, draft));
    EXPECT_EQ(store.root().list_set_children_name(), names{"s"});
}

TEST(Draft, KeepsATypeAboveAHundred) {
    const data_store store;
    constexpr auto wide = static_cast<data_type>(111);
    const auto set = store.root().create_set("s", shape({1}), wide);
    EXPECT_EQ(draft_of(set).type(), wide);
}

TEST(Draft, SharesNumbersUntilEitherIsWritten) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {1, 1, 2});
    const auto draft = draft_of(set);
    EXPECT_EQ(strata::share_channel(set, 0).data(), strata::share_channel(draft, 0).data());
    give<double>(whole(set), {5, 6});
    EXPECT_EQ(values<double>(whole(draft)), (doubles{0, 1}));
}

TEST(Draft, ChangedLeavesItsSet) {
    const data_store store;
    const auto set = described_set(store);
    const auto draft = draft_of(set);
    change(draft);
    expect_unchanged(set);
    expect_changed(draft);
}

TEST(Draft, TakesThePlaceOfItsSetUnderAllItsNames) {
    const data_store store;
    auto root = store.root();
    const auto set = described_set(store);
    ASSERT_TRUE(root.create_hard_link_internal("t", &set));
    const auto draft = draft_of(set);
    change(draft);
    exchange_content(set, draft);
    expect_changed(set);
    expect_changed(root.retrieve_set("t"));
    expect_unchanged(draft);
    EXPECT_EQ(root.list_set_children_name(), (names{"s", "t"}));
}

TEST(Draft, LeavesAttributesToTheirHandles) {
    const data_store store;
    const auto set = described_set(store);
    const auto unit = set.retrieve_attribute("Unit");
    const auto draft = draft_of(set);
    change(draft);
    exchange_content(set, draft);
    EXPECT_EQ(texts(unit), names{"s"});
}

TEST(Draft, OfNothingIsRefused) {
    EXPECT_EQ(refusal([] { static_cast<void>(draft_of({})); }), "This handle denotes no data set");
}

} // namespace
