#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <strata/access/copy_store.hpp>
#include <strata/access/draft_set.hpp>
#include <strata/access/find_set.hpp>
#include <strata/access/read_texts.hpp>
#include <strata/data_store.hpp>

#include "tests/cpp/strata/support/values.hpp"

namespace {

using strata::data_attribute;
using strata::data_group;
using strata::data_set;
using strata::data_store;
using strata::data_type;
using strata_test::give;
using strata_test::scalar;
using strata_test::shape;

bool never(const data_attribute&) { return false; }

std::string found(const data_group& group, const std::string& text) {
    const auto set = strata::find_set(group, "Label", text, never);
    return set ? set.name() : "none";
}

std::string found(const data_group& group, std::int32_t number) {
    const auto set = strata::find_set(group, "Index", number, never);
    return set ? set.name() : "none";
}

class FindSet : public testing::Test {
  protected:
    data_set add(const std::string& name) {
        return group_.create_set(name, shape({1}), data_type::float32);
    }

    data_set add(const std::string& name, const std::string& label) {
        auto set = add(name);
        set.create_attribute("Label", scalar(), data_type::string).write(label.c_str());
        return set;
    }

    data_store store_;
    data_group group_ = store_.root().create_group("g");
};

TEST_F(FindSet, TheFirstWithATextCounts) {
    EXPECT_EQ(found(group_, "a"), "none");
    add("one", "a");
    add("two", "b");
    add("three", "b");
    EXPECT_EQ(found(group_, "a"), "one");
    EXPECT_EQ(found(group_, "b"), "two");
    EXPECT_EQ(found(group_, "c"), "none");
    EXPECT_EQ(found(group_, ""), "none");
}

TEST_F(FindSet, NumbersOfEveryTypeAreRead) {
    auto whole = add("whole").create_attribute("Index", scalar(), data_type::int64);
    give<std::int64_t>(whole, {7});
    auto real = add("real").create_attribute("Index", scalar(), data_type::float64);
    give<double>(real, {8.0});
    EXPECT_EQ(found(group_, 7), "whole");
    EXPECT_EQ(found(group_, 8), "real");
    give<double>(real, {7.0});
    give<std::int64_t>(whole, {8});
    EXPECT_EQ(found(group_, 7), "real");
    EXPECT_EQ(found(group_, 8), "whole");
}

TEST_F(FindSet, WhatIsNoSingleValueIsDecidedByTheCaller) {
    auto several = add("several").create_attribute("Label", shape({2}), data_type::string);
    add("number").create_attribute("Label", scalar(), data_type::int32);
    add("one", "a");
    add("none at all");
    std::vector<data_type> asked;
    const auto note = [&](const data_attribute& attribute) {
        asked.push_back(attribute.type());
        return false;
    };
    EXPECT_EQ(strata::find_set(group_, "Label", "a", note).name(), "one");
    EXPECT_EQ(asked, (std::vector{data_type::string, data_type::int32}));
    const auto is_number = [](const data_attribute& attribute) {
        return attribute.type() == data_type::int32;
    };
    EXPECT_EQ(strata::find_set(group_, "Label", "a", is_number).name(), "number");
    EXPECT_EQ(strata::find_set(group_, "Label", "z", is_number).name(), "number");
}

TEST_F(FindSet, EveryWayToAnotherTextIsSeen) {
    auto one = add("one", "a");
    auto two = add("two", "b");
    ASSERT_EQ(found(group_, "b"), "two");

    one.retrieve_attribute("Label").write("b");
    EXPECT_EQ(found(group_, "b"), "one");
    one.delete_attribute("Label");
    EXPECT_EQ(found(group_, "b"), "two");
    one.create_attribute("Label", scalar(), data_type::string).write("b");
    EXPECT_EQ(found(group_, "b"), "one");
    group_.delete_set("one");
    EXPECT_EQ(found(group_, "b"), "two");

    const auto draft = strata::draft_of(two);
    draft.retrieve_attribute("Label").write("c");
    EXPECT_EQ(found(group_, "c"), "none");
    strata::exchange_content(two, draft);
    EXPECT_EQ(found(group_, "c"), "two");
    EXPECT_EQ(found(group_, "b"), "none");
    two.retrieve_attribute("Label").write("d");
    EXPECT_EQ(found(group_, "d"), "two");

    auto other = add("other", "x");
    ASSERT_EQ(found(group_, "x"), "other");
    other.copy_attribute(two.retrieve_attribute("Label"));
    EXPECT_EQ(found(group_, "x"), "none");
    two.retrieve_attribute("Label").write("e");
    EXPECT_EQ(found(group_, "d"), "other");
}

TEST_F(FindSet, ASetOfTwoGroupsIsFoundInBoth) {
    auto linking = store_.root().create_group("h");
    auto one = add("one", "a");
    ASSERT_EQ(found(group_, "a"), "one");
    EXPECT_TRUE(linking.create_hard_link_internal("linked", &one));
    for (const auto* label : {"b", "c", "d"}) {
        one.retrieve_attribute("Label").write(label);
        EXPECT_EQ(found(group_, label), "one");
        EXPECT_EQ(found(linking, label), "linked");
        EXPECT_EQ(found(group_, "a"), "none");
    }
    store_.root().delete_group("h");
    one.retrieve_attribute("Label").write("e");
    EXPECT_EQ(found(group_, "e"), "one");
}

TEST_F(FindSet, ASetWithTwoNamesInAGroupIsFoundByTheFirst) {
    auto one = add("one", "a");
    ASSERT_EQ(found(group_, "a"), "one");
    EXPECT_TRUE(group_.create_hard_link_internal("again", &one));
    EXPECT_EQ(found(group_, "a"), "one");
    one.retrieve_attribute("Label").write("b");
    EXPECT_EQ(found(group_, "b"), "one");
    group_.delete_set("one");
    EXPECT_EQ(found(group_, "b"), "again");
    one.retrieve_attribute("Label").write("c");
    EXPECT_EQ(found(group_, "c"), "again");
    EXPECT_EQ(found(group_, "b"), "none");
}

TEST_F(FindSet, ACopyOfAStoreIsSearchedByItself) {
    auto one = add("one", "a");
    ASSERT_EQ(found(group_, "a"), "one");
    const auto copy = strata::copy_store(store_);
    const auto copied = copy.root().retrieve_group("g");
    one.retrieve_attribute("Label").write("b");
    EXPECT_EQ(found(copied, "a"), "one");
    EXPECT_EQ(found(copied, "b"), "none");
    copied.retrieve_set("one").retrieve_attribute("Label").write("c");
    EXPECT_EQ(found(copied, "c"), "one");
    EXPECT_EQ(found(group_, "b"), "one");
}

TEST_F(FindSet, HandlesMayOutliveTheGroup) {
    auto one = add("one", "a");
    auto label = one.retrieve_attribute("Label");
    ASSERT_EQ(found(group_, "a"), "one");
    group_ = {};
    store_.root().delete_group("g");
    label.write("b");
    one.delete_attribute("Label");
    EXPECT_TRUE(one.list_attributes_name().empty());
}

TEST_F(FindSet, DifferentTextsAreInTheOrderOfTheFirstSets) {
    const auto texts = [&] { return strata::different_texts(group_, "Label"); };
    using list = std::vector<std::string>;
    EXPECT_EQ(texts(), list{});
    auto one = add("one", "b");
    add("two", "a");
    add("three", "b");
    add("none at all");
    EXPECT_EQ(texts(), (list{"b", "a"}));
    one.retrieve_attribute("Label").write("c");
    EXPECT_EQ(texts(), (list{"c", "a", "b"}));
    group_.delete_set("two");
    EXPECT_EQ(texts(), (list{"c", "b"}));
    auto number = add("number");
    number.create_attribute("Label", scalar(), data_type::int32);
    EXPECT_EQ(texts(), std::nullopt);
    number.delete_attribute("Label");
    EXPECT_EQ(texts(), (list{"c", "b"}));
}

/// The first set with this label, by looking at all of them.
std::string first_of_all(const data_group& group, const std::string& label) {
    for (const auto& name : group.list_set_children_name()) {
        const auto attribute = group.retrieve_set(name).retrieve_attribute("Label");
        if (attribute && strata::read_text(attribute) == label)
            return name;
    }
    return "none";
}

TEST_F(FindSet, AnyOrderOfChangesLeadsToTheFirstOfAll) {
    std::mt19937 random(5);
    const auto below = [&](std::size_t end) { return random() % end; };
    const auto some_label = [&] { return "L" + std::to_string(below(12)); };
    int next_name = 0;
    for (int step = 0; step < 20'000; ++step) {
        const auto listed = group_.list_set_children_name();
        const auto what = below(10);
        if (listed.empty() || (what < 2 && listed.size() < 40)) {
            add("s" + std::to_string(next_name++), some_label());
        } else {
            auto set = group_.retrieve_set(listed[below(listed.size())]);
            if (what == 2)
                group_.delete_set(set.name());
            else if (what == 3 && set.exists_attribute("Label"))
                set.delete_attribute("Label");
            else if (what == 4)
                strata::exchange_content(set, strata::draft_of(group_.retrieve_set(listed[0])));
            else if (auto attribute = set.retrieve_attribute("Label"))
                attribute.write(some_label().c_str());
            else
                set.create_attribute("Label", scalar(), data_type::string)
                    .write(some_label().c_str());
        }
        if (below(3) == 0) {
            const auto label = some_label();
            ASSERT_EQ(found(group_, label), first_of_all(group_, label)) << "after " << step;
        }
    }
}

} // namespace
