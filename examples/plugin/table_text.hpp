#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace example {

/// What every table starts with.
inline constexpr std::string_view table_signature = "#table ";

/// Where a text stops being a table, and why.
class table_error : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

struct table {
    double sample_rate = 0.0;              ///< Hz, above 0
    std::vector<std::string> labels;       ///< of the channels
    std::vector<std::vector<double>> rows; ///< one for each sample, with a value for each channel
};

/// Throws table_error.
[[nodiscard]] table parse_table(std::string_view text);

} // namespace example
