#include <strata/access/same_set.hpp>

#include "tests/cpp/strata/support/values.hpp"

namespace {

using strata::data_set;
using strata::data_store;
using strata::data_type;
using strata_test::counting_set;
using strata_test::give;
using strata_test::refusal;
using strata_test::shape;
using strata_test::values;
using strata_test::whole;

using names = std::vector<std::string>;

TEST(Sets, StartWithZeros) {
    const data_store store;
    const auto set = store.root().create_set("s", shape({2, 2}), data_type::int16);
    EXPECT_EQ(values<std::int16_t>(whole(set)), (std::vector<std::int16_t>{0, 0, 0, 0}));
}

TEST(Sets, StartWithEmptyTexts) {
    const data_store store;
    const auto set = store.root().create_set("s", shape({2}), data_type::string);
    EXPECT_EQ(strata_test::texts(whole(set)), (names{"", ""}));
}

TEST(Sets, KnowTheirNameTypeAndShape) {
    const data_store store;
    auto group = store.root().create_group("Format/Data");
    const auto set =
        store.root().create_set("Format/Data/LASI", shape({3, 1, 10}), data_type::float64);
    EXPECT_TRUE(set);
    EXPECT_EQ(set.name(), "LASI");
    EXPECT_EQ(set.type(), data_type::float64);
    EXPECT_EQ(set.shape(false), shape({3, 1, 10}));
    EXPECT_EQ(set.shape(true), shape({3, 1, 10}));
    EXPECT_EQ(group.list_set_children_name(), names{"LASI"});
}

TEST(Sets, KeepTheTypeTheyAreGiven) {
    const data_store store;
    const auto set = store.root().create_set("s", shape({1}), static_cast<data_type>(106));
    EXPECT_EQ(set.type(), static_cast<data_type>(106));
    give<std::int32_t>(whole(set), {-7});
    EXPECT_EQ(values<std::int32_t>(whole(set)), std::vector<std::int32_t>{-7});
}

TEST(Sets, TypeWithoutElementsReadsAndWritesNothing) {
    const data_store store;
    const auto set = store.root().create_set("s", shape({1}), static_cast<data_type>(200));
    double value = 5.0;
    EXPECT_FALSE(whole(set).read_value(&value, data_type::float64));
    EXPECT_FALSE(whole(set).write_value(&value, data_type::float64));
    EXPECT_EQ(value, 5.0);
}

TEST(Sets, NeedTheirGroup) {
    const data_store store;
    EXPECT_EQ(refusal([&] { store.root().create_set("Format/a", shape({1}), data_type::int8); }),
              "The group of 'Format/a' does not exist");
    EXPECT_FALSE(store.root().exists_group("Format"));
}

TEST(Sets, NeedAName) {
    const data_store store;
    EXPECT_EQ(refusal([&] { store.root().create_set("", shape({1}), data_type::int8); }),
              "'' is no name: a component is empty or where none is allowed");
}

TEST(Sets, AreNotCreatedTwice) {
    const data_store store;
    store.root().create_set("s", shape({1}), data_type::int8);
    EXPECT_EQ(refusal([&] { store.root().create_set("s", shape({1}), data_type::int8); }),
              "The data set 's' already exists");
}

TEST(Sets, MissingSetIsNamed) {
    const data_store store;
    EXPECT_EQ(refusal([&] { static_cast<void>(store.root().retrieve_set("Format/s")); }),
              "There is no data set 'Format/s'");
    EXPECT_EQ(refusal([&] { store.root().delete_set("s"); }), "There is no data set 's'");
}

TEST(Sets, HandlesOutliveDeletion) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {3});
    const auto selection = whole(set);
    store.root().delete_set("s");
    EXPECT_FALSE(store.root().exists_set("s"));
    EXPECT_EQ(values<double>(selection), (std::vector<double>{0, 1, 2}));
    EXPECT_EQ(set.name(), "s");
}

TEST(Sets, HandlesDenoteOneSet) {
    const data_store store;
    const auto set = store.root().create_set("s", shape({1}), data_type::float64);
    const auto again = store.root().retrieve_set("s");
    give<double>(whole(again), {4.5});
    EXPECT_EQ(values<double>(whole(set)), std::vector<double>{4.5});
}

TEST(Sets, EmptyHandleDenotesNoSet) {
    data_set nothing;
    EXPECT_FALSE(nothing);
    EXPECT_FALSE(nothing.select(strata_test::scalar(), false));
    EXPECT_FALSE(nothing.exists_attribute("a"));
    EXPECT_FALSE(nothing.retrieve_attribute("a"));
    EXPECT_EQ(nothing.type(), data_type::invalid);
    EXPECT_EQ(refusal([&] { nothing.resize(nullptr, 0); }), "This handle denotes no data set");
}

TEST(Sets, ImpossibleExtentsAreRefused) {
    const data_store store;
    auto root = store.root();
    EXPECT_EQ(refusal([&] { root.create_set("s", shape({3, -1}), data_type::int8); }),
              "An extent is not negative, -1 was given");
    EXPECT_EQ(
        refusal([&] { root.create_set("s", shape({1, 1, 1, 1, 1, 1, 1, 1, 1}), data_type::int8); }),
        "A shape has at most 8 dimensions, not 9");
    constexpr std::int64_t huge = std::int64_t{1} << 40;
    EXPECT_EQ(refusal([&] { root.create_set("s", shape({huge, huge}), data_type::int8); }),
              "A shape has more elements than can be addressed");
    EXPECT_EQ(refusal([&] { root.create_set("s", shape({huge, 0, huge}), data_type::int8); }),
              "A shape has more elements than can be addressed");
    EXPECT_FALSE(root.exists_set("s"));
}

TEST(HardLinks, GiveOneSetTwoNames) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {2});
    store.root().create_group("g");
    EXPECT_TRUE(store.root().create_hard_link_internal("g/t", &set));
    const auto linked = store.root().retrieve_set("g/t");
    EXPECT_EQ(linked.name(), "t");
    EXPECT_EQ(set.name(), "s");
    give<double>(whole(linked), {7, 8});
    EXPECT_EQ(values<double>(whole(set)), (std::vector<double>{7, 8}));
}

TEST(HardLinks, ShareAttributesAndExtent) {
    const data_store store;
    auto set = counting_set(store.root(), "s", {2});
    ASSERT_TRUE(store.root().create_hard_link_internal("t", &set));
    set.create_attribute("Unit", strata_test::scalar(), data_type::string).write("mm");
    strata_test::resize(set, {5});
    const auto linked = store.root().retrieve_set("t");
    EXPECT_EQ(strata_test::texts(linked.retrieve_attribute("Unit")), names{"mm"});
    EXPECT_EQ(linked.shape(false), shape({5}));
}

TEST(HardLinks, AreTheSameSetUnderBothNames) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {2});
    const auto other = counting_set(store.root(), "other", {2});
    ASSERT_TRUE(store.root().create_hard_link_internal("t", &set));
    EXPECT_TRUE(strata::same_set(set, store.root().retrieve_set("t")));
    EXPECT_FALSE(strata::same_set(set, other));
    EXPECT_FALSE(strata::same_set(set, {}));
    EXPECT_TRUE(strata::same_set({}, {}));
}

TEST(HardLinks, ASetMadeAgainUnderItsNameIsAnotherOne) {
    const data_store store;
    const auto set = counting_set(store.root(), "s", {2});
    store.root().delete_set("s");
    EXPECT_FALSE(strata::same_set(set, counting_set(store.root(), "s", {2})));
}

TEST(HardLinks, OutliveTheFirstName) {
    const data_store store;
    auto angles = store.root().create_group("Angles");
    auto forces = store.root().create_group("Forces");
    {
        const auto set = counting_set(angles, "LHip", {3});
        ASSERT_TRUE(forces.create_hard_link_internal("LHip moved", &set));
    }
    angles.delete_set("LHip");
    EXPECT_TRUE(angles.list_set_children_name().empty());
    EXPECT_EQ(values<double>(whole(forces.retrieve_set("LHip moved"))),
              (std::vector<double>{0, 1, 2}));
}

TEST(HardLinks, AreRefusedOntoATakenNameAndToNothing) {
    const data_store store;
    auto root = store.root();
    const auto set = counting_set(root, "s", {1});
    root.create_group("g");
    const data_set nothing;
    EXPECT_FALSE(root.create_hard_link_internal("s", &set));
    EXPECT_FALSE(root.create_hard_link_internal("g", &set));
    EXPECT_FALSE(root.create_hard_link_internal("", &set));
    EXPECT_FALSE(root.create_hard_link_internal("missing/t", &set));
    EXPECT_FALSE(root.create_hard_link_internal("t", nullptr));
    EXPECT_FALSE(root.create_hard_link_internal("t", &nothing));
    EXPECT_EQ(root.list_set_children_name(), names{"s"});
}

} // namespace
