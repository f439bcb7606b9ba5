#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace opensim {

/// Where a text stops being what it should be: "line 7: the time, expected a number, got 'x'".
class text_error : public std::runtime_error {
  public:
    text_error(std::uint64_t line, std::string_view what, std::string_view expected,
               std::string_view got);
};

/// A text of a file for a message: in quotes, in ASCII, and not too long.
[[nodiscard]] std::string shown(std::string_view text);

} // namespace opensim
