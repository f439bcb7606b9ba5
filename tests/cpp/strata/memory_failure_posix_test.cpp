#include <string>

#include <strata/access/append_elements.hpp>
#include <strata/access/draft_set.hpp>
#include <strata/access/find_set.hpp>

#include "tests/cpp/strata/support/buffers.hpp"
#include "tests/cpp/strata/support/failing_new.hpp"

// Whatever allocation fails, the tree is as it was before.

namespace {

using strata::data_store;
using strata::data_type;
using strata_test::count_allocations;
using strata_test::counting_set;
using strata_test::for_each_failing_allocation;
using strata_test::scalar;
using strata_test::shape;
using strata_test::values;
using strata_test::whole;

using doubles = std::vector<double>;
using names = std::vector<std::string>;

TEST(MemoryFailure, LeavesNoPartOfANewPath) {
    const data_store store;
    const auto failures = for_each_failing_allocation(
        [&] {
            store.root().create_group("a group with a long name/another with a long name/one more");
        },
        [&] { EXPECT_TRUE(store.root().list_group_children_name().empty()); });
    EXPECT_GT(failures, 5U);
}

TEST(MemoryFailure, LeavesNoSet) {
    const data_store store;
    const auto failures = for_each_failing_allocation(
        [&] { store.root().create_set("s", shape({3, 2, 4}), data_type::float64); },
        [&] { EXPECT_TRUE(store.root().list_set_children_name().empty()); });
    EXPECT_GT(failures, 3U);
}

TEST(MemoryFailure, LeavesNoAttribute) {
    const data_store store;
    for_each_failing_allocation(
        [&] { store.root().create_attribute("a", shape({3}), data_type::float64); },
        [&] { EXPECT_FALSE(store.root().exists_attribute("a")); });
    for_each_failing_allocation(
        [&] { store.root().create_attribute("b", scalar(), data_type::string); },
        [&] { EXPECT_FALSE(store.root().exists_attribute("b")); });
    EXPECT_EQ(store.root().list_attributes_name(), (names{"a", "b"}));
}

TEST(MemoryFailure, KeepsTheAttributeThatACopyWouldReplace) {
    const data_store store;
    auto root = store.root();
    auto group = root.create_group("g");
    auto source = root.create_attribute("a", shape({2}), data_type::string);
    strata_test::give_texts(
        source, {"a text that is too long for its place", "another text that is too long"});
    group.create_attribute("a", scalar(), data_type::int8);
    const auto failures = for_each_failing_allocation(
        [&] { group.copy_attribute(source); },
        [&] { EXPECT_EQ(group.retrieve_attribute("a").type(), data_type::int8); });
    EXPECT_GT(failures, 3U);
    EXPECT_EQ(group.retrieve_attribute("a").type(), data_type::string);
}

TEST(MemoryFailure, KeepsTextsThatWereToBeReplaced) {
    const data_store store;
    auto attribute = store.root().create_attribute("a", shape({2}), data_type::string);
    strata_test::give_texts(attribute, {"x", "y"});
    const std::vector<const char*> longer{"a text that is too long for its place",
                                          "another text that is too long"};
    const auto failures = for_each_failing_allocation(
        [&] { static_cast<void>(attribute.write_value(longer.data(), data_type::string)); },
        [&] { EXPECT_EQ(strata_test::texts(attribute), (names{"x", "y"})); });
    EXPECT_GT(failures, 1U);
}

TEST(MemoryFailure, KeepsSharedSamplesThatWereToBeOverwritten) {
    const data_store store;
    auto root = store.root();
    const auto set = counting_set(root, "s", {1, 2, 2});
    const auto first = strata_test::share_as(root, "first", set, 0);
    const auto second = strata_test::share_as(root, "second", set, 1);
    const doubles given{9, 9, 9, 9};
    const auto selection = whole(set);
    const auto failures = for_each_failing_allocation(
        [&] {
            static_cast<void>(
                strata::data_selection{selection}.write_value(given.data(), data_type::float64));
        },
        [&] { EXPECT_EQ(values<double>(selection), (doubles{0, 1, 2, 3})); });
    EXPECT_GT(failures, 2U);
    EXPECT_EQ(values<double>(whole(first)), (doubles{0, 1}));
    EXPECT_EQ(values<double>(whole(second)), (doubles{2, 3}));
}

TEST(MemoryFailure, KeepsTheExtentThatWasToChange) {
    const data_store store;
    auto set = counting_set(store.root(), "s", {2, 1, 2});
    const std::vector<std::uint64_t> larger{2, 2, 3};
    const auto failures = for_each_failing_allocation(
        [&] { set.resize(larger.data(), larger.size()); },
        [&] { EXPECT_EQ(values<double>(whole(set)), (doubles{0, 1, 2, 3})); });
    EXPECT_GT(failures, 2U);
    EXPECT_EQ(set.shape(false), shape({2, 2, 3}));
}

TEST(MemoryFailure, LeavesNoAppendedElement) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {2});
    const auto text = store.root().create_attribute("a", shape({2}), data_type::string);
    strata_test::give_texts(text, {"x", "y"});
    const doubles number{7};
    const char* longer = "a text that is too long for its place";
    const auto failures = for_each_failing_allocation(
        [&] { EXPECT_TRUE(append_elements(set, number.data(), 1, data_type::float64)); },
        [&] { EXPECT_EQ(values<double>(whole(set)), (doubles{0, 1})); });
    EXPECT_GE(failures, 2U);
    const auto more_failures = for_each_failing_allocation(
        [&] { EXPECT_TRUE(append_elements(text, &longer, 1, data_type::string)); },
        [&] { EXPECT_EQ(strata_test::texts(text), (names{"x", "y"})); });
    EXPECT_GE(more_failures, 3U);
    EXPECT_EQ(values<double>(whole(set)), (doubles{0, 1, 7}));
    EXPECT_EQ(strata_test::texts(text), (names{"x", "y", longer}));
}

TEST(MemoryFailure, IsNoneWhereElementsHaveRoom) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {2});
    const doubles number{7};
    ASSERT_TRUE(append_elements(set, number.data(), 1, data_type::float64));
    const auto failures = for_each_failing_allocation(
        [&] { EXPECT_TRUE(append_elements(set, number.data(), 1, data_type::float64)); }, [] {});
    EXPECT_EQ(failures, 0U);
    EXPECT_EQ(values<double>(whole(set)), (doubles{0, 1, 7, 7}));
}

TEST(MemoryFailure, LeavesASetWhoseDraftWasNotMade) {
    const data_store store;
    auto set = counting_set(store.root(), "s", {2});
    set.create_attribute("a", shape({2}), data_type::string);
    set.create_attribute("b", scalar(), data_type::string).write("x");
    strata::data_set draft;
    const auto failures = for_each_failing_allocation(
        [&] { draft = strata::draft_of(set); },
        [&] { EXPECT_EQ(set.list_attributes_name(), (names{"a", "b"})); });
    EXPECT_GT(failures, 5U);
    const auto exchange_failures =
        for_each_failing_allocation([&] { strata::exchange_content(set, draft); }, [] {});
    EXPECT_EQ(exchange_failures, 0U);
}

TEST(MemoryFailure, LeavesNoLink) {
    const data_store store;
    auto root = store.root();
    const auto set = counting_set(root, "s", {1});
    const std::string name = "a name that is too long for its place";
    for_each_failing_allocation([&] { root.create_hard_link_internal(name, &set); },
                                [&] { EXPECT_EQ(root.list_set_children_name(), names{"s"}); });
    EXPECT_EQ(root.list_set_children_name(), (names{"s", name}));
}

TEST(MemoryFailure, LosesNoNodeWhileTheListGrows) {
    const data_store store;
    auto root = store.root();
    names expected;
    for (int i = 0; i < 100; ++i) {
        const auto name = "group number " + std::to_string(i);
        for_each_failing_allocation([&] { root.create_group(name); },
                                    [&] { EXPECT_EQ(root.list_group_children_name(), expected); });
        expected.push_back(name);
        ASSERT_EQ(root.list_group_children_name(), expected);
    }
}

TEST(MemoryFailure, HandsOutNoTexts) {
    const data_store store;
    auto attribute = store.root().create_attribute("a", shape({2}), data_type::string);
    std::vector<const char*> buffer{nullptr, nullptr};
    for_each_failing_allocation(
        [&] { EXPECT_TRUE(attribute.read_value(buffer.data(), data_type::string)); },
        [&] { EXPECT_EQ(buffer, (std::vector<const char*>{nullptr, nullptr})); });
    strata::data_converter_string_clean_buffer(attribute.shape(), buffer.data());
}

strata::data_set labelled(const strata::data_group& group, int number) {
    const auto label = "a label that is long enough " + std::to_string(number);
    return strata::find_set(group, "Label", label, [](const auto&) { return false; });
}

/// A group of so many sets, labelled by their numbers.
strata::data_group labelled_sets(const data_store& store, int count) {
    auto group = store.root().create_group("g");
    for (int number = 0; number < count; ++number) {
        const auto label = "a label that is long enough " + std::to_string(number);
        group.create_set(std::to_string(number), shape({1}), data_type::float32)
            .create_attribute("Label", scalar(), data_type::string)
            .write(label.c_str());
    }
    return group;
}

TEST(MemoryFailure, LeavesASearchThatFindsTheRightSet) {
    const data_store store;
    auto group = labelled_sets(store, 10);
    const auto failures =
        for_each_failing_allocation([&] { EXPECT_EQ(labelled(group, 7).name(), "7"); },
                                    [&] { EXPECT_EQ(labelled(group, 8).name(), "8"); });
    EXPECT_GT(failures, 0U);
    group.create_set("one more", shape({1}), data_type::float32)
        .copy_attribute(group.retrieve_set("0").retrieve_attribute("Label"));
    group.delete_set("0");
    for_each_failing_allocation([&] { EXPECT_EQ(labelled(group, 0).name(), "one more"); },
                                [&] { EXPECT_EQ(labelled(group, 8).name(), "8"); });
}

/// How often memory is taken to find a set after the label of another one was changed.
std::size_t allocations_of_a_search(int sets) {
    const data_store store;
    const auto group = labelled_sets(store, sets);
    EXPECT_EQ(labelled(group, 1).name(), "1");
    group.retrieve_set("2").retrieve_attribute("Label").write("another label that is long");
    return count_allocations([&] { EXPECT_EQ(labelled(group, 3).name(), "3"); });
}

TEST(MemoryFailure, SearchesTakeNoMoreMemoryAmongMoreSets) {
    EXPECT_EQ(allocations_of_a_search(2'000), allocations_of_a_search(20));
}

} // namespace
