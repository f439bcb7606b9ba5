#include "schema/name_pool.hpp"

#include <string>

#include <gtest/gtest.h>

namespace {

TEST(NamePool, GivesAFreeNameAsItIs) {
    schema::name_pool names;
    EXPECT_EQ(names.take_distinct("A"), "A");
    EXPECT_EQ(names.take_distinct("B"), "B");
    EXPECT_EQ(names.take_distinct(""), "");
}

TEST(NamePool, NumbersEqualNamesFromTwoOn) {
    schema::name_pool names;
    EXPECT_EQ(names.take_distinct("A"), "A");
    EXPECT_EQ(names.take_distinct("A"), "A_2");
    EXPECT_EQ(names.take_distinct("A"), "A_3");
}

TEST(NamePool, LeavesOutNumbersThatNamesHave) {
    schema::name_pool names;
    EXPECT_TRUE(names.take("A_2"));
    EXPECT_TRUE(names.take("A"));
    EXPECT_EQ(names.take_distinct("A"), "A_3");
}

TEST(NamePool, NumbersWhatLooksNumbered) {
    schema::name_pool names;
    EXPECT_TRUE(names.take("A_2"));
    EXPECT_EQ(names.take_distinct("A_2"), "A_2_2");
}

TEST(NamePool, SaysThatANameIsTaken) {
    schema::name_pool names;
    EXPECT_TRUE(names.take("A"));
    EXPECT_FALSE(names.take("A"));
    EXPECT_TRUE(names.take("a")); // capitals count
}

TEST(NamePool, NumbersABaseThatIsFree) {
    schema::name_pool names;
    EXPECT_EQ(names.take_numbered("A"), "A_2");
    EXPECT_EQ(names.take_numbered("unamed", 7), "unamed_7");
    EXPECT_TRUE(names.take("A"));
}

TEST(NamePool, NamesManyByOneBase) {
    schema::name_pool names;
    for (int i = 0; i < 60000; ++i)
        static_cast<void>(names.take_distinct("A"));
    EXPECT_EQ(names.take_distinct("A"), "A_60001");
}

} // namespace
