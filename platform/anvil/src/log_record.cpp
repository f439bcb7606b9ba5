#include "platform/anvil/src/log_record.hpp"

#include <array>
#include <cstdio>
#include <string_view>

#include "platform/anvil/src/escaped_text.hpp"

namespace anvil {

namespace {

constexpr std::array<std::string_view, 7> level_names{"trace", "debug",    "info", "warning",
                                                      "error", "critical", "off"};

std::string_view name_of(log_level level) noexcept {
    const auto index = static_cast<std::size_t>(level);
    return index < level_names.size() ? level_names[index] : "unknown";
}

std::string utc_text(std::chrono::system_clock::time_point time) {
    using namespace std::chrono;
    const auto milliseconds_time = floor<milliseconds>(time);
    const auto day = floor<days>(milliseconds_time);
    const year_month_day date{day};
    const hh_mm_ss clock{milliseconds_time - day};

    std::array<char, 80> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02d.%03dZ",
                  static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                  static_cast<unsigned>(date.day()), static_cast<int>(clock.hours().count()),
                  static_cast<int>(clock.minutes().count()),
                  static_cast<int>(clock.seconds().count()),
                  static_cast<int>(clock.subseconds().count()));
    return text.data();
}

} // namespace

void append_log_record(std::string& lines, std::chrono::system_clock::time_point time,
                       std::uint64_t process, const log_msg& message) {
    std::string line = utc_text(time);
    line += " [";
    line += name_of(message.level);
    line += "] [";
    append_escaped(line, message.logger_name);
    line += "] [";
    line += std::to_string(process);
    line += "] ";
    append_escaped(line, message.text);
    line += '\n';
    lines += line;
}

} // namespace anvil
