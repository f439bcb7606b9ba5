#include "tests/cpp/strata/support/values.hpp"

namespace {

using strata::data_group;
using strata::data_store;
using strata::data_type;
using strata_test::refusal;
using strata_test::shape;

using names = std::vector<std::string>;

TEST(Groups, NewStoreHasAnEmptyUsableRoot) {
    const data_store store;
    EXPECT_EQ(store.root().name(), "");
    EXPECT_TRUE(store.root().list_group_children_name().empty());
    store.root().create_group("Format");
    EXPECT_TRUE(store.root().exists_group("Format"));
}

TEST(Groups, CopiesOfAStoreShareTheTree) {
    const data_store store;
    const data_store copy =
        store; // NOLINT(performance-unnecessary-copy-initialization): the copy is tested
    copy.root().create_group("Format");
    EXPECT_TRUE(store.root().exists_group("Format"));
}

TEST(Groups, CreatesTheGroupsOnTheWay) {
    const data_store store;
    const auto made = store.root().create_group("Format/Data/Angles");
    EXPECT_EQ(made.name(), "Angles");
    EXPECT_EQ(store.root().retrieve_group("Format").list_group_children_name(), names{"Data"});
    EXPECT_EQ(store.root().retrieve_group("Format/Data").list_group_children_name(),
              names{"Angles"});
}

TEST(Groups, CreatesBelowGroupsThatExist) {
    const data_store store;
    store.root().create_group("Format/Data");
    store.root().create_group("Format/Metadata/ANALOG");
    EXPECT_EQ(store.root().retrieve_group("Format").list_group_children_name(),
              (names{"Data", "Metadata"}));
}

TEST(Groups, SeparatorsAtBothEndsAreIgnored) {
    const data_store store;
    store.root().create_group("/Format/Data/");
    EXPECT_TRUE(store.root().exists_group("Format/Data"));
    EXPECT_TRUE(store.root().exists_group("/Format/Data/"));
}

TEST(Groups, EmptyPathIsTheGroupItself) {
    const data_store store;
    auto format = store.root().create_group("Format");
    format.create_group("Data");
    EXPECT_TRUE(format.exists_group(""));
    EXPECT_TRUE(format.exists_group("/"));
    EXPECT_TRUE(format.retrieve_group("").exists_group("Data"));
}

TEST(Groups, EmptyComponentsDenoteNothing) {
    const data_store store;
    store.root().create_group("a/b");
    for (const auto* path : {"a//b", "//a", "a//", "//a/b", "///"})
        EXPECT_FALSE(store.root().exists_group(path)) << path;
    EXPECT_FALSE(store.root().exists_set("a//b"));
    EXPECT_FALSE(store.root().exists_attribute("//b"));
}

TEST(Groups, EmptyComponentsAreNotCreated) {
    const data_store store;
    EXPECT_EQ(refusal([&] { store.root().create_group("a//b"); }),
              "'a//b' is no name: a component is empty or where none is allowed");
    EXPECT_TRUE(store.root().list_group_children_name().empty());
}

TEST(Groups, ExistingGroupIsNotCreatedAgain) {
    const data_store store;
    store.root().create_group("Format/Data");
    EXPECT_EQ(refusal([&] { store.root().create_group("Format/Data"); }),
              "The group 'Format/Data' already exists");
    EXPECT_EQ(refusal([&] { store.root().create_group(""); }), "The group '' already exists");
}

TEST(Groups, MissingGroupIsNamed) {
    const data_store store;
    EXPECT_EQ(refusal([&] { static_cast<void>(store.root().retrieve_group("Format/Events")); }),
              "There is no group 'Format/Events'");
    EXPECT_EQ(refusal([&] { store.root().delete_group("Format"); }), "There is no group 'Format'");
}

TEST(Groups, GroupAndSetOfOneNameAreRefused) {
    const data_store store;
    store.root().create_group("a");
    store.root().create_set("b", shape({1}), data_type::int8);
    EXPECT_EQ(refusal([&] { store.root().create_set("a", shape({1}), data_type::int8); }),
              "The group 'a' already exists");
    EXPECT_EQ(refusal([&] { store.root().create_group("b"); }), "The data set 'b' already exists");
    EXPECT_EQ(refusal([&] { store.root().create_group("b/c"); }),
              "The data set 'b' already exists");
}

TEST(Groups, GroupAndAttributeMayShareAName) {
    const data_store store;
    store.root().create_group("a");
    store.root().create_attribute("a", strata_test::scalar(), data_type::int8);
    EXPECT_TRUE(store.root().exists_group("a"));
    EXPECT_TRUE(store.root().exists_attribute("a"));
}

TEST(Groups, DeletingRemovesEverythingBelow) {
    const data_store store;
    store.root().create_group("Format/Data/Angles");
    store.root().delete_group("Format/Data");
    EXPECT_FALSE(store.root().exists_group("Format/Data"));
    EXPECT_FALSE(store.root().exists_group("Format/Data/Angles"));
    EXPECT_TRUE(store.root().exists_group("Format"));
}

TEST(Groups, DeletedGroupIsNotFoundOnPathsThatLedToIt) {
    const data_store store;
    store.root().create_group("Format/Data/Angles");
    EXPECT_TRUE(store.root().exists_group("Format/Data/Angles"));
    EXPECT_FALSE(store.root().exists_set("Format/Data/Angles/LKnee"));
    store.root().retrieve_group("Format").delete_group("Data");
    EXPECT_FALSE(store.root().exists_group("Format/Data/Angles"));
    EXPECT_FALSE(store.root().exists_attribute("Format/Data/Angles/NumSamples"));
}

TEST(Groups, PathLeadsToTheGroupThatWasMadeAnew) {
    const data_store store;
    const auto old = store.root().create_group("Format/Data");
    EXPECT_FALSE(store.root().exists_set("Format/Data/Points"));
    store.root().delete_group("Format/Data");
    store.root().create_group("Format/Data");
    store.root().create_set("Format/Data/Points", shape({1}), data_type::int8);
    EXPECT_TRUE(store.root().exists_set("Format/Data/Points"));
    EXPECT_FALSE(old.exists_set("Points"));
}

TEST(Groups, PathIsLookedUpFromEachGroupOnItsOwn) {
    const data_store store;
    store.root().create_group("Format/Data/Inner");
    store.root().create_group("Other/Data");
    EXPECT_TRUE(store.root().retrieve_group("Format").exists_group("Data/Inner"));
    EXPECT_FALSE(store.root().retrieve_group("Other").exists_group("Data/Inner"));
}

TEST(Groups, HandlesOutliveDeletion) {
    const data_store store;
    auto data = store.root().create_group("Format/Data");
    auto angles = data.create_group("Angles");
    store.root().delete_group("Format");
    EXPECT_EQ(angles.name(), "Angles");
    EXPECT_TRUE(data.exists_group("Angles"));
    angles.create_group("More");
    EXPECT_TRUE(angles.exists_group("More"));
}

TEST(Groups, HandlesOutliveTheStore) {
    data_group group;
    {
        const data_store store;
        group = store.root().create_group("Format");
    }
    group.create_group("Data");
    EXPECT_TRUE(group.exists_group("Data"));
}

TEST(Groups, GroupCannotDeleteItself) {
    const data_store store;
    auto group = store.root().create_group("Format");
    EXPECT_EQ(refusal([&] { group.delete_group(""); }), "A group cannot delete itself");
    EXPECT_TRUE(store.root().exists_group("Format"));
}

TEST(Groups, AreListedInOrderOfCreation) {
    const data_store store;
    auto root = store.root();
    for (const auto* name : {"m", "a", "z", "b"})
        root.create_group(name);
    root.delete_group("a");
    root.create_group("c");
    root.create_group("a");
    EXPECT_EQ(root.list_group_children_name(), (names{"m", "z", "b", "c", "a"}));
}

TEST(Groups, ManyKeepTheirOrderAndAreFound) {
    const data_store store;
    auto root = store.root();
    names expected;
    for (int i = 0; i < 3000; ++i)
        root.create_group("group " + std::to_string(i));
    for (int i = 0; i < 3000; ++i) {
        const auto name = "group " + std::to_string(i);
        if (i % 3 == 0) {
            expected.push_back(name);
        } else {
            root.delete_group(name);
        }
    }
    EXPECT_EQ(root.list_group_children_name(), expected);
    for (int i = 0; i < 3000; ++i)
        EXPECT_EQ(root.exists_group("group " + std::to_string(i)), i % 3 == 0) << i;
}

TEST(Groups, NamesOfAllLengthsAreTold) {
    const data_store store;
    auto root = store.root();
    for (std::size_t length = 1; length <= 40; ++length) {
        for (std::size_t changed = 0; changed < length; ++changed) {
            std::string name(length, 'a');
            name[changed] = 'b';
            root.create_group(name);
        }
    }
    EXPECT_EQ(root.list_group_children_name().size(), 820U);
    EXPECT_FALSE(root.exists_group(std::string(17, 'a')));
}

TEST(Groups, HundredLevelsAreTheMost) {
    const data_store store;
    std::string path = "g";
    for (int i = 1; i < 100; ++i)
        path += "/g";
    store.root().create_group(path);
    EXPECT_TRUE(store.root().exists_group(path));
    const auto deeper = path + "/g";
    EXPECT_EQ(refusal([&] { store.root().create_group(deeper); }),
              "The group '" + deeper + "' would lie more than 100 levels deep");
    EXPECT_EQ(refusal([&] { store.root().retrieve_group(path).create_group("g"); }),
              "The group 'g' would lie more than 100 levels deep");
}

TEST(Groups, HandleThatDenotesNothingRefusesEverything) {
    data_group nothing;
    EXPECT_FALSE(nothing.exists_group("a"));
    EXPECT_FALSE(nothing.exists_set("a"));
    EXPECT_FALSE(nothing.exists_attribute("a"));
    EXPECT_EQ(refusal([&] { nothing.create_group("a"); }), "This handle denotes no group");
    EXPECT_EQ(refusal([&] { static_cast<void>(nothing.list_attributes_name()); }),
              "This handle denotes no group");
}

} // namespace
