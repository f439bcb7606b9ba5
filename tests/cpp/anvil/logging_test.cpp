#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <anvil/logging.hpp>

#include "tests/cpp/anvil/support/collecting_sink.hpp"

namespace {

using anvil::log_level;
using anvil_test::collecting_sink;
using strings = std::vector<std::string>;

/// A default sink that keeps lines; nothing of it is left for the next test.
class Logging : public testing::Test {
  protected:
    Logging() { anvil::install_default_log_sink(sink_); }
    ~Logging() override {
        anvil::install_default_log_sink(nullptr);
        anvil::install_logger_registry(nullptr);
        anvil::set_default_log_level(static_cast<int>(log_level::info));
    }

    std::shared_ptr<collecting_sink> sink_ = std::make_shared<collecting_sink>();
    std::shared_ptr<anvil::log_stream> logger_ = anvil::make_default_logger("gait");
    anvil::logger_registry registry_;
};

TEST_F(Logging, LineReachesTheDefaultSinkWithTheLoggersName) {
    anvil::log_line(*logger_, log_level::warning, "Slippery.");
    EXPECT_EQ(sink_->lines, strings{"[3] [gait] Slippery."});
}

TEST_F(Logging, LevelIsInfoUntilItIsSet) {
    anvil::log_line(*logger_, log_level::debug, "no");
    anvil::log_line(*logger_, log_level::info, "yes");
    EXPECT_EQ(sink_->lines, strings{"[2] [gait] yes"});
}

TEST_F(Logging, LinesBelowTheLevelAreDropped) {
    for (int level = 0; level <= 6; ++level) {
        anvil::set_default_log_level(level);
        for (int line = 0; line < 6; ++line)
            EXPECT_EQ(logger_->should_log(static_cast<log_level>(line)), line >= level);
    }
}

TEST_F(Logging, SinkItDropsLinesBelowTheLevelToo) {
    logger_->sink_it(log_level::debug, {"gait", log_level::debug, "no"});
    EXPECT_EQ(sink_->lines, strings{});
}

TEST_F(Logging, SinkItKeepsTheNameOfTheMessage) {
    logger_->sink_it(log_level::error, {"other", log_level::error, "yes"});
    EXPECT_EQ(sink_->lines, strings{"[4] [other] yes"});
}

TEST_F(Logging, NothingIsLoggedWithTheLevelOff) {
    anvil::set_default_log_level(0);
    EXPECT_FALSE(logger_->should_log(log_level::off));
    anvil::log_line(*logger_, log_level::off, "no");
    EXPECT_EQ(sink_->lines, strings{});
}

TEST_F(Logging, LoggerFollowsTheDefaultSink) {
    const auto second = std::make_shared<collecting_sink>();
    anvil::install_default_log_sink(second);
    anvil::log_line(*logger_, log_level::info, "moved");
    EXPECT_EQ(sink_->lines, strings{});
    EXPECT_EQ(second->lines, strings{"[2] [gait] moved"});
    anvil::install_default_log_sink(sink_);
}

TEST_F(Logging, FormerSinkIsFlushedAndReleased) {
    anvil::install_default_log_sink(nullptr);
    EXPECT_EQ(sink_->flushes, 1);
    EXPECT_EQ(sink_.use_count(), 1);
}

TEST_F(Logging, LinesWithoutASinkAreDropped) {
    anvil::install_default_log_sink(nullptr);
    anvil::log_line(*logger_, log_level::critical, "nobody hears this");
    logger_->flush();
    EXPECT_EQ(sink_->lines, strings{});
}

TEST_F(Logging, FlushReachesTheSink) {
    logger_->flush();
    EXPECT_EQ(sink_->flushes, 1);
}

TEST_F(Logging, RegisteredLoggerStandsUnderItsName) {
    anvil::install_logger_registry(&registry_);
    EXPECT_TRUE(anvil::register_logger(logger_, false));
    EXPECT_EQ(registry_.size(), 1U);
    EXPECT_EQ(registry_.at("gait"), logger_);
}

TEST_F(Logging, RegisteredLoggerIsKeptUnlessItIsToBeReplaced) {
    anvil::install_logger_registry(&registry_);
    const auto other = anvil::make_default_logger("gait");
    anvil::register_logger(logger_, false);
    EXPECT_FALSE(anvil::register_logger(other, false));
    EXPECT_EQ(registry_.at("gait"), logger_);
    EXPECT_TRUE(anvil::register_logger(other, true));
    EXPECT_EQ(registry_.at("gait"), other);
    EXPECT_EQ(registry_.size(), 1U);
}

TEST_F(Logging, NothingIsRegisteredWithoutARegistry) {
    EXPECT_FALSE(anvil::register_logger(logger_, true));
    anvil::install_logger_registry(&registry_);
    anvil::install_logger_registry(nullptr);
    EXPECT_FALSE(anvil::register_logger(logger_, true));
    EXPECT_TRUE(registry_.empty());
}

TEST_F(Logging, NoLoggerIsNotRegistered) {
    anvil::install_logger_registry(&registry_);
    EXPECT_FALSE(anvil::register_logger(nullptr, true));
    EXPECT_TRUE(registry_.empty());
}

} // namespace
