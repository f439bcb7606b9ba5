#include "plugins/opensim/cells.hpp"

#include <algorithm>
#include <charconv>
#include <system_error>

#include "plugins/opensim/number_text.hpp"

namespace opensim {

namespace {

constexpr bool is_space(char character) noexcept { return character == ' ' || character == '\t'; }

const char* behind_blanks(const char* at, const char* end) noexcept {
    while (at != end && *at == ' ')
        ++at;
    return at;
}

std::string_view without_end(std::string_view text) noexcept {
    while (!text.empty() && is_space(text.back()))
        text.remove_suffix(1);
    return text;
}

std::vector<std::string_view> between_blanks(std::string_view line) {
    std::vector<std::string_view> cells;
    for (line = trimmed(line); !line.empty(); line = trimmed(line)) {
        const auto length = std::min(line.find(' '), line.size());
        cells.push_back(line.substr(0, length));
        line.remove_prefix(length);
    }
    return cells;
}

} // namespace

std::string_view trimmed(std::string_view text) noexcept {
    text = without_end(text);
    while (!text.empty() && is_space(text.front()))
        text.remove_prefix(1);
    return text;
}

std::string lower_case(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), [](char character) {
        const bool is_capital = character >= 'A' && character <= 'Z';
        return is_capital ? static_cast<char>(character - 'A' + 'a') : character;
    });
    return result;
}

std::vector<std::string_view> cells_of(std::string_view line) {
    line = without_end(line);
    if (line.find('\t') == std::string_view::npos)
        return between_blanks(line);
    std::vector<std::string_view> cells;
    for (;;) {
        const auto length = std::min(line.find('\t'), line.size());
        cells.push_back(trimmed(line.substr(0, length)));
        if (length == line.size())
            break;
        line.remove_prefix(length + 1);
    }
    return cells;
}

number_cells::kind number_cells::next() {
    if (is_done_)
        return kind::none;
    at_ = behind_blanks(at_, end_);
    const auto [stop, failure] = std::from_chars(at_, end_, value_);
    if (failure == std::errc{} && (stop == end_ || is_space(*stop))) {
        text_ = {at_, static_cast<std::size_t>(stop - at_)};
        at_ = stop;
        leave_cell();
        return kind::number;
    }
    const auto* cell_end = std::find_if(at_, end_, is_space);
    text_ = {at_, static_cast<std::size_t>(cell_end - at_)};
    at_ = cell_end;
    leave_cell();
    if (text_.empty())
        return kind::empty;
    const auto number = number_of(text_);
    value_ = number.value_or(0.0);
    return number ? kind::number : kind::malformed;
}

void number_cells::leave_cell() noexcept {
    at_ = behind_blanks(at_, end_);
    is_done_ = at_ == end_;
    if (!is_done_ && *at_ == '\t')
        ++at_;
}

} // namespace opensim
