#include "acquisition/files/canonical_path.hpp"

#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "store/swig_error.hpp"
#include "tests/cpp/anvil/support/temporary_folder.hpp"

namespace {

using mox::canonical_path;
using mox::without_long_path_prefix;

TEST(LongPathPrefix, OfANetworkPathBecomesTwoSeparators) {
    EXPECT_EQ(without_long_path_prefix(R"(\\?\UNC\server\share\walk.c3d)"),
              R"(\\server\share\walk.c3d)");
}

TEST(LongPathPrefix, BeforeADriveLetterIsDropped) {
    EXPECT_EQ(without_long_path_prefix(R"(\\?\C:\trials\walk.c3d)"), R"(C:\trials\walk.c3d)");
    EXPECT_EQ(without_long_path_prefix(R"(\\?\z:)"), "z:");
}

TEST(LongPathPrefix, OfTheGlobalRootIsKept) {
    EXPECT_EQ(without_long_path_prefix(R"(\\?\GLOBALROOT\Device\walk.c3d)"),
              R"(\\?\GLOBALROOT\Device\walk.c3d)");
}

TEST(LongPathPrefix, BeforeAnythingElseIsKept) {
    for (const char* path : {R"(\\?\)", R"(\\?\C)", R"(\\?\1:\x)", R"(\\?\UNC)",
                             R"(\\?\Volume{0}\x)", R"(\\.\C:\x)", R"(\\?)"})
        EXPECT_EQ(without_long_path_prefix(path), path);
}

TEST(LongPathPrefix, IsLookedForAtTheStartOnly) {
    EXPECT_EQ(without_long_path_prefix(R"(C:\a\\?\C:\b)"), R"(C:\a\\?\C:\b)");
}

TEST(LongPathPrefix, OrdinaryPathsStayAsTheyAre) {
    for (const char* path :
         {"", "/trials/walk.c3d", R"(C:\trials)", R"(\\server\share)", "walk.c3d"})
        EXPECT_EQ(without_long_path_prefix(path), path);
}

std::string failure_of(const std::string& name) {
    try {
        (void)canonical_path(name);
    } catch (const mox::swig_error& error) {
        EXPECT_EQ(error.code(), mox::error_code::runtime);
        return error.message();
    }
    return "nothing was thrown";
}

/// The current folder is one of the test's own.
class CanonicalPath : public testing::Test {
  protected:
    CanonicalPath() {
        std::filesystem::create_directories(folder_ / "below");
        std::filesystem::current_path(folder_);
        std::ofstream{folder_ / "walk.c3d"} << "content";
    }
    ~CanonicalPath() override { std::filesystem::current_path(former_); }

  private:
    const std::filesystem::path former_ = std::filesystem::current_path();
    const anvil_test::temporary_folder temporary_;

  protected:
    const std::filesystem::path folder_ = std::filesystem::canonical(temporary_.path());
};

TEST_F(CanonicalPath, OfARelativeNameIsBelowTheCurrentFolder) {
    EXPECT_EQ(canonical_path("walk.c3d"), folder_ / "walk.c3d");
}

TEST_F(CanonicalPath, HasNoDotsAndNoLinks) {
    EXPECT_EQ(canonical_path("below/../walk.c3d"), folder_ / "walk.c3d");
    std::filesystem::create_symlink(folder_ / "walk.c3d", folder_ / "below" / "link.c3d");
    if (!std::filesystem::exists(folder_ / "below" / "link.c3d"))
        GTEST_SKIP() << "the system follows no links";
    EXPECT_EQ(canonical_path("./below/link.c3d"), folder_ / "walk.c3d");
}

TEST_F(CanonicalPath, OfAMissingFileQuotesTheNameAsGiven) {
    EXPECT_EQ(failure_of("below/run.c3d"), "The filename 'below/run.c3d' does not exist");
    EXPECT_EQ(failure_of(""), "The filename '' does not exist");
}

TEST_F(CanonicalPath, OfALinkToNowhereDoesNotExist) {
    std::filesystem::create_symlink(folder_ / "gone.c3d", folder_ / "link.c3d");
    EXPECT_EQ(failure_of("link.c3d"), "The filename 'link.c3d' does not exist");
}

TEST_F(CanonicalPath, OfANameWithAZeroByteDoesNotExist) {
    const std::string name("walk.c3d\0.txt", 13);
    EXPECT_EQ(failure_of(name), "The filename '" + name + "' does not exist");
}

TEST_F(CanonicalPath, KeepsBytesThatAreNoUtf8) {
#ifdef _WIN32
    GTEST_SKIP() << "names are no bytes";
#endif
    const std::string name = "walk\xff.c3d";
    std::ofstream{folder_ / name} << "content";
    EXPECT_EQ(canonical_path(name), folder_ / name);
}

} // namespace
