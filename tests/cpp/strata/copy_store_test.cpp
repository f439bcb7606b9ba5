#include <strata/access/copy_store.hpp>
#include <strata/access/same_set.hpp>

#include <thread>

#include "tests/cpp/strata/support/buffers.hpp"

namespace {

using strata::copy_store;
using strata::data_store;
using strata::data_type;
using strata_test::counting_set;
using strata_test::give;
using strata_test::scalar;
using strata_test::shape;
using strata_test::share_as;
using strata_test::texts;
using strata_test::values;
using strata_test::whole;

using doubles = std::vector<double>;
using names = std::vector<std::string>;

/// Groups, sets, attributes and a set of two names.
data_store made_store() {
    const data_store store;
    auto root = store.root();
    root.create_group("b/deep");
    auto group = root.create_group("a");
    group.create_attribute("Text", scalar(), data_type::string).write("as it was");
    give<std::int32_t>(group.create_attribute("Numbers", shape({2}), data_type::int32), {1, 2});
    const auto set = counting_set(group, "s", {1, 2, 3});
    auto described = set;
    described.create_attribute("Unit", scalar(), data_type::string).write("mm");
    EXPECT_TRUE(root.create_hard_link_internal("b/deep/link", &set));
    return store;
}

void expect_as_made(const data_store& store) {
    const auto root = store.root();
    EXPECT_EQ(root.list_group_children_name(), (names{"b", "a"}));
    EXPECT_EQ(root.retrieve_group("a").list_attributes_name(), (names{"Text", "Numbers"}));
    EXPECT_EQ(texts(root.retrieve_attribute("a/Text")), names{"as it was"});
    EXPECT_EQ(values<std::int32_t>(root.retrieve_attribute("a/Numbers")),
              (std::vector<std::int32_t>{1, 2}));
    EXPECT_EQ(values<double>(whole(root.retrieve_set("a/s"))), (doubles{0, 1, 2, 3, 4, 5}));
    EXPECT_EQ(texts(root.retrieve_set("b/deep/link").retrieve_attribute("Unit")), names{"mm"});
}

void change_everything(const data_store& store) {
    auto root = store.root();
    root.retrieve_attribute("a/Text").write("new");
    give<std::int32_t>(root.retrieve_attribute("a/Numbers"), {8, 9});
    give<double>(whole(root.retrieve_set("a/s")), {9, 9, 9, 9, 9, 9});
    root.retrieve_set("a/s").retrieve_attribute("Unit").write("m");
    root.delete_group("b");
    root.create_group("c");
}

TEST(Copy, HoldsWhatTheStoreHoldsInItsOrder) { expect_as_made(copy_store(made_store())); }

TEST(Copy, DoesNotSeeWhatTheStoreBecomes) {
    const auto store = made_store();
    const auto copy = copy_store(store);
    change_everything(store);
    expect_as_made(copy);
}

TEST(Copy, LeavesTheStoreWhenItChanges) {
    const auto store = made_store();
    change_everything(copy_store(store));
    expect_as_made(store);
}

TEST(Copy, KeepsTheNamesOfOneSetTogether) {
    const auto store = made_store();
    const auto copy = copy_store(store);
    const auto set = copy.root().retrieve_set("a/s");
    EXPECT_TRUE(same_set(set, copy.root().retrieve_set("b/deep/link")));
    EXPECT_FALSE(same_set(set, store.root().retrieve_set("a/s")));
}

TEST(Copy, SharesNumbersUntilEitherIsWritten) {
    const auto store = made_store();
    const auto copy = copy_store(store);
    const auto address = [](const data_store& of, std::uint64_t channel) {
        return strata::share_channel(of.root().retrieve_set("a/s"), channel).data();
    };
    EXPECT_EQ(address(store, 0), address(copy, 0));
    EXPECT_EQ(address(store, 1), address(copy, 1));
    const std::vector<std::uint64_t> first_channel{0, 1, 0, 1, 0, 3};
    give<double>(strata_test::part(copy.root().retrieve_set("a/s"), first_channel), {7, 7, 7});
    EXPECT_NE(address(store, 0), address(copy, 0));
    EXPECT_EQ(address(store, 1), address(copy, 1));
}

TEST(Copy, OfTheDeepestTreeIsMade) {
    const data_store store;
    std::string path = "g";
    for (int depth = 1; depth < 100; ++depth)
        path += "/g";
    store.root().create_group(path);
    EXPECT_TRUE(copy_store(store).root().exists_group(path));
}

TEST(Copy, IsAnotherThreadsToUse) {
    const auto store = made_store();
    for (int round = 0; round < 50; ++round) {
        auto copy = copy_store(store);
        doubles seen;
        std::thread other{[mine = std::exchange(copy, data_store{}), &seen] {
            const auto set = mine.root().retrieve_set("a/s");
            seen = values<double>(whole(set));
            give<double>(whole(set), doubles(6, -1));
        }};
        give<double>(whole(store.root().retrieve_set("a/s")), {5, 4, 3, 2, 1, 0});
        other.join();
        EXPECT_EQ(seen, round == 0 ? (doubles{0, 1, 2, 3, 4, 5}) : (doubles{5, 4, 3, 2, 1, 0}));
    }
}

} // namespace
