#include <memory>
#include <string>

#include <gtest/gtest.h>

#include <anvil/application_core.hpp>

namespace {

using anvil::application_core;

TEST(ApplicationCore, ThereIsNoInstanceBeforeOneIsMade) {
    EXPECT_EQ(application_core::instance(), nullptr);
}

TEST(ApplicationCore, FirstOneIsTheInstanceUntilItEnds) {
    auto first = std::make_unique<application_core>(0, nullptr);
    {
        const application_core second{0, nullptr};
        EXPECT_EQ(application_core::instance(), first.get());
    }
    EXPECT_EQ(application_core::instance(), first.get());
    first.reset();
    EXPECT_EQ(application_core::instance(), nullptr);
}

TEST(ApplicationCore, KeepsTheNamesThatItIsGiven) {
    application_core application{0, nullptr};
    application.set_organization_name("Works");
    application.set_organization_domain("example.org");
    application.set_application_name("Gait");
    application.set_application_version("1.2.3");
    EXPECT_EQ(application.organization_name(), "Works");
    EXPECT_EQ(application.organization_domain(), "example.org");
    EXPECT_EQ(application.application_name(), "Gait");
    EXPECT_EQ(application.application_version(), "1.2.3");
}

TEST(ApplicationCore, HasNoNameWithoutArguments) {
    const application_core application{0, nullptr};
    EXPECT_EQ(application.application_name(), "");
}

TEST(ApplicationCore, IsNamedAfterTheProgramAtFirst) {
    std::string program = "/opt/lab/gait.exe";
    char* arguments[] = {program.data(), nullptr};
    const application_core application{1, arguments};
    EXPECT_EQ(application.application_name(), "gait");
}

} // namespace
