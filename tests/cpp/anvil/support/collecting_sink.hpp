#pragma once

#include <string>
#include <vector>

#include <anvil/logging.hpp>

namespace anvil_test {

/// Keeps what it is given: "[level] [logger] text". For tests with one thread.
class collecting_sink final : public anvil::log_sink {
  public:
    void sink_it(const anvil::log_msg& message) noexcept override {
        lines.push_back("[" + std::to_string(static_cast<int>(message.level)) + "] [" +
                        std::string{message.logger_name} + "] " + std::string{message.text});
    }
    void flush() noexcept override { ++flushes; }

    std::vector<std::string> lines;
    int flushes = 0;
};

} // namespace anvil_test
