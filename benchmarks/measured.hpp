#pragma once

#include <cstddef>
#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <string>

/// Highest memory use of the process so far, in bytes.
inline std::size_t peak_memory() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:"))
            return std::stoul(line.substr(6)) * 1024;
    throw std::runtime_error("no VmHWM in /proc/self/status");
}

/// Lets the peak start again from what is in use now.
inline void reset_peak_memory() { std::ofstream("/proc/self/clear_refs") << "5"; }

/// Numbers as a JSON array.
class json_array {
  public:
    void add(double number) {
        char digits[32];
        std::snprintf(digits, sizeof digits, "%.17g", number);
        if (!text_.empty())
            text_ += ',';
        text_ += digits;
    }
    [[nodiscard]] std::string text() const { return "[" + text_ + "]"; }

  private:
    std::string text_;
};
