#pragma once

#include <string>
#include <vector>

#include <anvil/logging.hpp>

namespace c3d_test {

/// Keeps the texts that are logged.
class line_collector final : public anvil::log_sink {
  public:
    void sink_it(const anvil::log_msg& message) noexcept override {
        lines.emplace_back(message.text);
    }
    void flush() noexcept override {}

    std::vector<std::string> lines;
};

} // namespace c3d_test
