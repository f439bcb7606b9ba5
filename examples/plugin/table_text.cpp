#include "examples/plugin/table_text.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

namespace example {

namespace {

[[noreturn]] void fail(std::size_t line, const std::string& what) {
    throw table_error{"line " + std::to_string(line) + ": " + what};
}

/// Takes lines off the front of a text and counts them.
class line_reader {
  public:
    explicit line_reader(std::string_view text) : rest_(text) {}

    std::optional<std::string_view> next() {
        if (rest_.empty())
            return std::nullopt;
        ++number_;
        const auto end = std::min(rest_.find('\n'), rest_.size());
        auto line = rest_.substr(0, end);
        rest_.remove_prefix(std::min(end + 1, rest_.size()));
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        return line;
    }
    [[nodiscard]] std::size_t number() const { return number_; }

  private:
    std::string_view rest_;
    std::size_t number_ = 0;
};

std::vector<std::string_view> split_fields(std::string_view line) {
    std::vector<std::string_view> fields;
    for (;;) {
        const auto end = line.find(',');
        fields.push_back(line.substr(0, end));
        if (end == std::string_view::npos)
            return fields;
        line.remove_prefix(end + 1);
    }
}

double parse_number(std::string_view text, std::size_t line) {
    double value = 0.0;
    const auto* begin = text.data();
    const auto* end = begin + text.size();
    const auto result = std::from_chars(begin, end, value);
    if (result.ec != std::errc{} || result.ptr != end)
        fail(line, std::string{"'"}.append(text) + "' is no number");
    return value;
}

double parse_sample_rate(std::string_view line) {
    if (!line.starts_with(table_signature))
        fail(1, "'#table ' and the sample rate were expected");
    const auto rate = parse_number(line.substr(table_signature.size()), 1);
    if (!(rate > 0.0) || std::isinf(rate))
        fail(1, "the sample rate is not above 0");
    return rate;
}

} // namespace

table parse_table(std::string_view text) {
    table content;
    line_reader lines{text};
    content.sample_rate = parse_sample_rate(lines.next().value_or(""));
    const auto labels = lines.next();
    if (!labels)
        fail(2, "the labels are missing");
    for (auto label : split_fields(*labels))
        content.labels.emplace_back(label);

    while (const auto line = lines.next()) {
        auto& row = content.rows.emplace_back();
        for (auto field : split_fields(*line))
            row.push_back(parse_number(field, lines.number()));
        if (row.size() != content.labels.size()) {
            fail(lines.number(), std::to_string(content.labels.size()) + " values were expected, " +
                                     std::to_string(row.size()) + " found");
        }
    }
    return content;
}

} // namespace example
