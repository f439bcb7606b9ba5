#include "plugins/opensim/column_file.hpp"

#include <cstddef>
#include <span>
#include <string>
#include <utility>

#include <fmt/format.h>

#include "plugins/opensim/cells.hpp"
#include "plugins/opensim/column_header.hpp"
#include "plugins/opensim/row_cells.hpp"
#include "plugins/opensim/row_times.hpp"
#include "plugins/opensim/sample_rows.hpp"
#include "plugins/opensim/text_error.hpp"

namespace opensim {

namespace {

void read_row(const line_reader& lines, std::span<double> row, row_times& times) {
    row_cells cells(lines);
    const auto time = cells.finite_number("the time");
    const auto time_text = cells.text();
    const auto found = cells.fill(row, infinities::taken);
    if (found != row.size()) {
        throw text_error(lines.number(), "the row", fmt::format("{} cells", row.size() + 1),
                         std::to_string(found + 1));
    }
    cells.require_end(row.size() + 1);
    times.add(time, time_text, lines.number());
}

} // namespace

bool is_header_end(std::string_view line) { return lower_case(trimmed(line)) == header_end; }

trial_content read_columns(line_reader& lines, schema::warnings& notes) {
    auto header = read_column_header(lines, notes);
    sample_rows samples(header.labels.size());
    row_times times;
    while (lines.next_with_content()) {
        if (!read_row_or_note_end(lines, samples, notes,
                                  [&](auto row) { read_row(lines, row, times); }))
            break;
    }
    if (header.rows && header.rows->number != static_cast<double>(times.count())) {
        notes.add("line {}: {} is {}, but there are {} rows", header.rows->line, header.rows->name,
                  header.rows->number, times.count());
    }
    trial_content content;
    content.time = times.decide(header.rate, notes);
    content.analogs.samples = samples.take_channels(1);
    content.analogs.labels = std::move(header.labels);
    content.analogs.units = std::move(header.units);
    return content;
}

} // namespace opensim
