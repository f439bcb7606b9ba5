#include <gtest/gtest.h>

#include <strata/strata_logger.hpp>

#include "tests/cpp/anvil/support/collecting_sink.hpp"

namespace {

TEST(StrataLogger, WritesToTheDefaultSinkUnderItsName) {
    const auto sink = std::make_shared<anvil_test::collecting_sink>();
    anvil::install_default_log_sink(sink);
    const auto logger = get_strata_logger();
    anvil::log_line(*logger, anvil::log_level::error, "a line");
    anvil::install_default_log_sink(nullptr);
    EXPECT_EQ(logger->name(), "strata");
    EXPECT_EQ(sink->lines, std::vector<std::string>{"[4] [strata] a line"});
}

TEST(StrataLogger, IsOne) { EXPECT_EQ(get_strata_logger(), get_strata_logger()); }

} // namespace
