#pragma once

#include <string>

#include <anvil/log_sink_file_threaded.hpp>

namespace anvil_test {

inline void log(anvil::log_sink_file_threaded& sink, const std::string& text) {
    sink.sink_it({"gait", anvil::log_level::info, text});
}

} // namespace anvil_test
