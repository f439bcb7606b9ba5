#include "module/plugin_folder.hpp"

#include <gtest/gtest.h>

namespace {

using mox::parent_of;

TEST(ParentOf, APathLosesItsLastComponent) {
    EXPECT_EQ(parent_of("/usr/lib/module.so"), "/usr/lib");
    EXPECT_EQ(parent_of(R"(C:\python\module.pyd)"), R"(C:\python)");
    EXPECT_EQ(parent_of("lib/module.so"), "lib");
}

TEST(ParentOf, BothSeparatorsCount) {
    EXPECT_EQ(parent_of(R"(C:/python\lib/module.pyd)"), R"(C:/python\lib)");
}

TEST(ParentOf, SeveralSeparatorsGoTogether) {
    EXPECT_EQ(parent_of("/usr/lib//module.so"), "/usr/lib");
    EXPECT_EQ(parent_of(R"(C:\python\\module.pyd)"), R"(C:\python)");
}

TEST(ParentOf, ASeparatorAtTheEndHasNothingBehindIt) {
    EXPECT_EQ(parent_of("/usr/lib/"), "/usr/lib");
}

TEST(ParentOf, TheRootSeparatorStays) {
    EXPECT_EQ(parent_of("/module.so"), "/");
    EXPECT_EQ(parent_of(R"(C:\module.pyd)"), R"(C:\)");
    EXPECT_EQ(parent_of("/"), "/");
    EXPECT_EQ(parent_of(R"(C:\)"), R"(C:\)");
}

TEST(ParentOf, ARootNameStays) {
    EXPECT_EQ(parent_of("C:module.pyd"), "C:");
    EXPECT_EQ(parent_of("C:"), "C:");
    EXPECT_EQ(parent_of(R"(\\server\module.pyd)"), R"(\\server\)");
    EXPECT_EQ(parent_of(R"(\\server\share\module.pyd)"), R"(\\server\share)");
    EXPECT_EQ(parent_of(R"(\\?\C:\python\module.pyd)"), R"(\\?\C:\python)");
}

TEST(ParentOf, ANameAloneHasAnEmptyParent) {
    EXPECT_EQ(parent_of("module.so"), "");
    EXPECT_EQ(parent_of(""), "");
}

} // namespace
