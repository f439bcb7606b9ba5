#include "tests/cpp/data_modifier/support/split_test.hpp"

namespace {

using data_modifier_test::names;

class SplitNames : public data_modifier_test::split_test {};

TEST_F(SplitNames, AreLabelsWithoutSeparators) {
    make_source(1, 1, {"EMG/left", "EMG\\right"});
    ASSERT_EQ(split(), "");
    EXPECT_EQ(parts().list_set_children_name(), (names{"EMG_left", "EMG_right"}));
    EXPECT_EQ(text("EMG_left", "Label"), "EMG/left");
    EXPECT_EQ(text("EMG_right", "Label"), "EMG\\right");
    EXPECT_TRUE(parts().list_group_children_name().empty());
}

TEST_F(SplitNames, OfEmptyLabelsHaveTheIndex) {
    make_source(1, 1, {"a", "", ""});
    ASSERT_EQ(split(), "");
    EXPECT_EQ(parts().list_set_children_name(), (names{"a", "unamed_1", "unamed_2"}));
    EXPECT_EQ(text("unamed_1", "Label"), "");
}

TEST_F(SplitNames, OfMissingLabelsHaveTheIndex) {
    auto source = make_source(1, 1, {"a", "b"});
    strata_test::resize(source, {1, 4, 1});
    ASSERT_EQ(split(), "");
    EXPECT_EQ(parts().list_set_children_name(), (names{"a", "b", "unamed_2", "unamed_3"}));
    EXPECT_EQ(text("unamed_3", "Label"), "");
}

TEST_F(SplitNames, AreMadeUniqueBySuffixes) {
    make_source(1, 1, {"a", "a", "a_2", "a"});
    ASSERT_EQ(split(), "");
    EXPECT_EQ(parts().list_set_children_name(), (names{"a", "a_2", "a_2_2", "a_3"}));
    for (const auto* name : {"a", "a_2", "a_3"})
        EXPECT_EQ(text(name, "Label"), "a");
    EXPECT_EQ(text("a_2_2", "Label"), "a_2");
}

TEST_F(SplitNames, AvoidWhatTheGroupHolds) {
    make_source(1, 1, {"a", "b"});
    auto group = root_.create_group("Format/Data/Parts");
    group.create_set("a", strata_test::shape({1}), strata::data_type::int8);
    group.create_group("b");
    ASSERT_EQ(split(), "");
    EXPECT_EQ(parts().list_set_children_name(), (names{"a", "a_2", "b_2"}));
}

TEST_F(SplitNames, AreTakenFromTheSourceWhereItHasThem) {
    auto source = make_source(1, 1, {"a", "a", "c"});
    give_texts(source, "SetNames", {"first", "second/half", ""});
    ASSERT_EQ(split(), "");
    EXPECT_EQ(parts().list_set_children_name(), (names{"first", "second_half", "c"}));
    EXPECT_EQ(text("first", "Label"), "a");
}

TEST_F(SplitNames, OfThousandsOfEqualLabelsAreAllDifferent) {
    make_source(1, 1, std::vector<const char*>(5000, "same"));
    ASSERT_EQ(split(), "");
    EXPECT_EQ(parts().list_set_children_name().size(), 5000U);
    EXPECT_EQ(number<std::int32_t>("same_5000", "RelativeSetIndex"), 4999);
}

} // namespace
