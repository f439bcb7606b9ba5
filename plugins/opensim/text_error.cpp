#include "plugins/opensim/text_error.hpp"

#include <fmt/format.h>

namespace opensim {

namespace {

constexpr std::size_t most_shown = 40;

} // namespace

text_error::text_error(std::uint64_t line, std::string_view what, std::string_view expected,
                       std::string_view got)
    : std::runtime_error(
          fmt::format("line {}: {}, expected {}, got {}", line, what, expected, got)) {}

std::string shown(std::string_view text) {
    std::string result = "'";
    for (const char character : text.substr(0, most_shown)) {
        if (character >= ' ' && character <= '~')
            result.push_back(character);
        else
            result += fmt::format("\\x{:02x}", static_cast<unsigned char>(character));
    }
    return result + (text.size() > most_shown ? "...'" : "'");
}

} // namespace opensim
