#pragma once

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include <anvil/logging.hpp>
#include <strata/plugin_manager.hpp>

#include "tests/cpp/anvil/support/collecting_sink.hpp"

namespace strata_test {

/// Path of a plugin that was built for the tests.
inline std::string plugin_path(const std::string& name) {
    return std::string{STRATA_TEST_PLUGINS} + "/" + name + STRATA_PLUGIN_SUFFIX;
}

/// Loads plugins and keeps the lines of the log.
class plugin_test : public testing::Test {
  protected:
    plugin_test() { anvil::install_default_log_sink(sink_); }
    ~plugin_test() override { anvil::install_default_log_sink(nullptr); }

    [[nodiscard]] const std::vector<std::string>& log() const { return sink_->lines; }

    /// The line that the log has for a file that was not loaded.
    [[nodiscard]] static std::string refusal_line(const std::string& path,
                                                  const std::string& reason) {
        return "[4] [strata] The plugin '" + path + "' was not loaded: " + reason;
    }

    std::shared_ptr<anvil_test::collecting_sink> sink_ =
        std::make_shared<anvil_test::collecting_sink>();
    strata::plugin_manager manager_;
};

} // namespace strata_test
