#include "plugins/opensim/marker_header.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <unordered_map>

#include <fmt/format.h>

#include "plugins/opensim/cells.hpp"
#include "plugins/opensim/number_text.hpp"
#include "plugins/opensim/text_error.hpp"
#include "schema/file_text.hpp"
#include "schema/names.hpp"

namespace opensim {

namespace {

/// No file that a trial is written to holds more.
constexpr std::size_t most_markers = 65535;

using named_values = std::unordered_map<std::string, std::string>;

void require_line(line_reader& lines, std::string_view expected) {
    if (!lines.next_with_content())
        throw text_error(lines.number() + 1, "the header", expected, "the end of the file");
}

/// The two lines of names and values, by names in small letters.
named_values read_values(line_reader& lines) {
    require_line(lines, "the names 'DataRate' and so on");
    std::vector<std::string> names;
    for (const auto cell : cells_of(lines.line()))
        names.push_back(lower_case(cell));
    if (std::ranges::find(names, "datarate") == names.end()) {
        throw text_error(lines.number(), "the header", "the names 'DataRate' and so on",
                         shown(lines.line()));
    }
    require_line(lines, "the values of the names before");
    const auto cells = cells_of(lines.line());
    named_values values;
    for (std::size_t i = 0; i < std::min(names.size(), cells.size()); ++i)
        values.emplace(names[i], cells[i]);
    return values;
}

std::optional<double> number_told(const named_values& values, const std::string& name) {
    const auto found = values.find(name);
    const auto number = found == values.end() ? std::nullopt : number_of(found->second);
    return number && std::isfinite(*number) && *number >= 0.0 ? number : std::nullopt;
}

std::string unit_told(const named_values& values, schema::warnings& notes) {
    const auto found = values.find("units");
    if (found != values.end() && !found->second.empty())
        return schema::as_utf8(found->second);
    notes.add("the header does not tell the units of the markers");
    return schema::unknown_unit;
}

/// Cells of the line below the labels, which has X1, Y1 and Z1 for the first marker; none where
/// that line is missing.
std::optional<std::size_t> coordinate_columns(line_reader& lines) {
    if (!lines.next_with_content())
        return std::nullopt;
    const auto cells = cells_of(lines.line());
    const auto first = std::ranges::find_if(cells, [](auto cell) { return !cell.empty(); });
    if (first == cells.end() || !lower_case(*first).starts_with('x')) {
        lines.put_back();
        return std::nullopt;
    }
    return static_cast<std::size_t>(
        std::ranges::count_if(cells, [](auto cell) { return !cell.empty(); }));
}

/// Each label stands above the first of three columns; labels between blanks follow each other.
std::vector<std::string> spread_labels(const std::vector<std::string_view>& cells,
                                       std::uint64_t line) {
    const std::vector<std::string_view> names(
        cells.begin() + static_cast<std::ptrdiff_t>(columns_before_markers), cells.end());
    const bool in_thirds = std::ranges::all_of(names, [&](const auto& name) {
        const auto index = static_cast<std::size_t>(&name - names.data());
        return name.empty() || index % components == 0;
    });
    std::vector<std::string> labels;
    const auto has_gaps = std::ranges::any_of(names, [](auto name) { return name.empty(); });
    if (in_thirds) {
        for (std::size_t i = 0; i < names.size(); i += components)
            labels.push_back(schema::as_utf8(names[i]));
    } else if (!has_gaps) {
        for (const auto name : names)
            labels.push_back(schema::as_utf8(name));
    } else {
        throw text_error(line, "the labels", "one above every third column",
                         "labels above other columns");
    }
    return labels;
}

std::vector<std::string> read_labels(line_reader& lines) {
    require_line(lines, "the line of 'Frame#', 'Time' and the labels");
    const auto line = lines.number();
    const auto cells = cells_of(lines.line());
    if (cells.size() < columns_before_markers || !lower_case(cells[0]).starts_with("frame") ||
        lower_case(cells[1]) != "time") {
        throw text_error(line, "the labels", "'Frame#', 'Time' and the labels",
                         shown(lines.line()));
    }
    auto labels = spread_labels(cells, line);
    if (const auto columns = coordinate_columns(lines)) {
        const auto needed = labels.size() * components;
        if (*columns % components != 0 || *columns < needed) {
            throw text_error(lines.number(), "the names of the coordinates",
                             fmt::format("{} for {} labels", needed, labels.size()),
                             std::to_string(*columns));
        }
        labels.resize(*columns / components);
    }
    if (labels.size() > most_markers) {
        throw text_error(line, "the labels", fmt::format("at most {}", most_markers),
                         std::to_string(labels.size()));
    }
    return labels;
}

void note_rate(const named_values& values, std::uint64_t line, schema::warnings& notes) {
    const auto found = values.find("datarate");
    notes.add("line {}: DataRate is {}, no rate; the times of the rows tell it", line,
              shown(found == values.end() ? "" : found->second));
}

} // namespace

marker_header read_marker_header(line_reader& lines, schema::warnings& notes) {
    require_line(lines, "'PathFileType'");
    const auto values = read_values(lines);
    marker_header header;
    header.line_of_values = lines.number();
    header.rate = number_told(values, "datarate");
    if (!header.rate || *header.rate == 0.0) {
        header.rate.reset();
        note_rate(values, lines.number(), notes);
    }
    constexpr double exact_counts = 9007199254740992.0;
    if (const auto frames = number_told(values, "numframes"); frames && *frames < exact_counts)
        header.frames = static_cast<std::uint64_t>(*frames);
    header.unit = unit_told(values, notes);
    header.labels = read_labels(lines);
    const auto markers = number_told(values, "nummarkers");
    if (markers && *markers != static_cast<double>(header.labels.size())) {
        notes.add("line {}: NumMarkers is {}, but there are {} markers", header.line_of_values,
                  *markers, header.labels.size());
    }
    return header;
}

} // namespace opensim
