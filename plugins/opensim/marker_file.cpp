#include "plugins/opensim/marker_file.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <utility>

#include <fmt/format.h>

#include "plugins/opensim/cells.hpp"
#include "plugins/opensim/marker_header.hpp"
#include "plugins/opensim/row_cells.hpp"
#include "plugins/opensim/row_times.hpp"
#include "plugins/opensim/sample_rows.hpp"
#include "plugins/opensim/text_error.hpp"

namespace opensim {

namespace {

/// A marker that has not all three coordinates was not seen. Returns how many had some.
std::uint64_t forget_partial(std::span<double> row) {
    std::uint64_t partial = 0;
    for (std::size_t i = 0; i + components <= row.size(); i += components) {
        const auto place = row.subspan(i, components);
        const auto missing =
            std::ranges::count_if(place, [](double number) { return std::isnan(number); });
        if (missing == 0)
            continue;
        partial += std::cmp_less(missing, components) ? 1 : 0;
        std::ranges::fill(place, std::numeric_limits<double>::quiet_NaN());
    }
    return partial;
}

class marker_rows {
  public:
    marker_rows(line_reader& lines, const marker_header& header)
        : lines_(lines), header_(header), samples_(components * header.labels.size()),
          most_missing_(lines.size()) {}

    void read(schema::warnings& notes) {
        while (lines_.next_with_content())
            if (!read_row_or_note_end(lines_, samples_, notes, [&](auto row) { read_row(row); }))
                break;
        note_oddities(notes);
    }

    [[nodiscard]] sample_rows& samples() noexcept { return samples_; }
    [[nodiscard]] const row_times& times() const noexcept { return times_; }

    /// Frame# of the first row.
    [[nodiscard]] double first_number() const noexcept { return first_number_; }

  private:
    void read_row(std::span<double> row) {
        row_cells cells(lines_);
        const auto number = cells.finite_number("the frame number");
        const auto time = cells.finite_number("the time");
        const std::string_view time_text = cells.text();
        const auto found = cells.fill(row, infinities::refused);
        require_whole_markers(row.size(), found);
        cells.require_end(columns_before_markers + row.size());
        partial_ += forget_partial(row);
        times_.add(time, time_text, lines_.number());
        follow(number);
    }

    /// A row may end before markers that were not seen, as far as the file is long enough for all
    /// of them: a few bytes must not become many numbers.
    void require_whole_markers(std::size_t wanted, std::size_t found) {
        const auto missing = wanted - found;
        if (missing == 0)
            return;
        if (missing % components == 0 && missing <= most_missing_ && lines_.is_complete()) {
            most_missing_ -= missing;
            return;
        }
        throw text_error(lines_.number(), "the row",
                         fmt::format("{} cells", columns_before_markers + wanted),
                         std::to_string(columns_before_markers + found));
    }

    void follow(double number) {
        if (times_.count() == 1) {
            first_number_ = number;
        } else if (number != last_number_ + 1.0 && line_of_jump_ == 0) {
            line_of_jump_ = lines_.number();
            before_jump_ = last_number_;
            behind_jump_ = number;
        }
        last_number_ = number;
    }

    void note_oddities(schema::warnings& notes) const {
        const auto rows = times_.count();
        if (header_.frames && *header_.frames != rows) {
            notes.add("line {}: NumFrames is {}, but there are {} rows", header_.line_of_values,
                      *header_.frames, rows);
        }
        if (line_of_jump_ != 0) {
            notes.add("line {}: frame number {} follows {}; the times count", line_of_jump_,
                      behind_jump_, before_jump_);
        }
        if (partial_ != 0) {
            notes.add("{} samples of markers lack one or two coordinates; they count as not seen",
                      partial_);
        }
    }

    line_reader& lines_;
    const marker_header& header_;
    sample_rows samples_;
    row_times times_;
    std::uint64_t most_missing_;
    std::uint64_t partial_ = 0;
    double first_number_ = 1.0;
    double last_number_ = 0.0;
    std::uint64_t line_of_jump_ = 0;
    double before_jump_ = 0.0;
    double behind_jump_ = 0.0;
};

} // namespace

trial_content read_markers(line_reader& lines, schema::warnings& notes) {
    auto header = read_marker_header(lines, notes);
    marker_rows rows(lines, header);
    rows.read(notes);
    trial_content content;
    content.time = rows.times().decide(header.rate, notes);
    const auto first = static_cast<double>(content.time.first_frame);
    if (content.time.rate > 0.0 && rows.times().count() > 0 && rows.first_number() != first) {
        notes.add("frames are numbered from {} on, but by its time the first is frame {}; the time "
                  "counts",
                  rows.first_number(), first);
    }
    content.points.samples = rows.samples().take_channels(components);
    content.points.units.assign(header.labels.size(), header.unit);
    content.points.labels = std::move(header.labels);
    return content;
}

} // namespace opensim
