#include <filesystem>
#include <optional>

#include <gtest/gtest.h>

#include <anvil/application_core.hpp>
#include <anvil/standard_paths.hpp>

#include "tests/cpp/anvil/support/environment_variable.hpp"

namespace {

using anvil::standard_paths;
using anvil_test::environment_variable;

class StandardPaths : public testing::Test {
  protected:
    StandardPaths() {
        application_.set_organization_name("Works");
        application_.set_application_name("Gait lab");
    }

    anvil::application_core application_{0, nullptr};
    environment_variable override_{"GAIT_LAB_STATE_DIR", std::nullopt};
    environment_variable state_{"XDG_STATE_HOME", std::nullopt};
    environment_variable home_{"HOME", "/home/walker"};
};

TEST_F(StandardPaths, StateLiesInTheHomeFolder) {
    EXPECT_EQ(standard_paths::writable_location(1), "/home/walker/.local/state/Works/Gait lab");
}

TEST_F(StandardPaths, StateFollowsTheStateVariable) {
    const environment_variable state{"XDG_STATE_HOME", "/var/walker"};
    EXPECT_EQ(standard_paths::writable_location(1), "/var/walker/Works/Gait lab");
}

TEST_F(StandardPaths, RelativeStateVariableCountsAsUnset) {
    const environment_variable state{"XDG_STATE_HOME", "walker"};
    EXPECT_EQ(standard_paths::writable_location(1), "/home/walker/.local/state/Works/Gait lab");
}

TEST_F(StandardPaths, OwnVariableNamesTheFolderItself) {
    const environment_variable state{"XDG_STATE_HOME", "/var/walker"};
    const environment_variable chosen{"GAIT_LAB_STATE_DIR", "/srv/state"};
    EXPECT_EQ(standard_paths::writable_location(1), "/srv/state");
}

TEST_F(StandardPaths, EmptyOwnVariableCountsAsUnset) {
    const environment_variable chosen{"GAIT_LAB_STATE_DIR", ""};
    EXPECT_EQ(standard_paths::writable_location(1), "/home/walker/.local/state/Works/Gait lab");
}

TEST_F(StandardPaths, NamesThatAreNotSetAddNoFolder) {
    application_.set_organization_name("");
    EXPECT_EQ(standard_paths::writable_location(1), "/home/walker/.local/state/Gait lab");
}

TEST_F(StandardPaths, HomeIsLookedUpWhereTheEnvironmentHasNone) {
    const environment_variable home{"HOME", std::nullopt};
    const auto found = standard_paths::writable_location(1);
    EXPECT_TRUE(found.empty() || found.is_absolute()) << found;
}

TEST_F(StandardPaths, UnknownLocationIsEmpty) {
    EXPECT_EQ(standard_paths::writable_location(0), "");
    EXPECT_EQ(standard_paths::writable_location(2), "");
}

TEST(StandardPathsWithoutApplication, StateIsTheUsersOwnFolder) {
    const environment_variable state{"XDG_STATE_HOME", "/var/walker"};
    EXPECT_EQ(standard_paths::writable_location(1), "/var/walker");
}

} // namespace
