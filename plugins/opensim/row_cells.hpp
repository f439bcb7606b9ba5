#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include <fmt/format.h>

#include "plugins/opensim/cells.hpp"
#include "plugins/opensim/line_reader.hpp"
#include "plugins/opensim/sample_rows.hpp"
#include "plugins/opensim/text_error.hpp"
#include "schema/warnings.hpp"

namespace opensim {

/// Whether infinity is a number; NaN is one in any case.
enum class infinities { taken, refused };

/// The numbers of the line that a reader is at. Throws text_error for what is none.
class row_cells {
  public:
    explicit row_cells(const line_reader& lines) noexcept
        : cells_(lines.line()), line_(lines.number()) {}

    /// The next cell, which is `what`.
    [[nodiscard]] double finite_number(std::string_view what);

    /// Text of the last cell.
    [[nodiscard]] std::string_view text() const noexcept { return cells_.text(); }

    /// Takes cells into `row` as long as there are any; empty ones leave what is there. Returns how
    /// many there were.
    [[nodiscard]] std::size_t fill(std::span<double> row, infinities rule);

    /// Requires that all further cells are empty; the row should have `expected` cells.
    void require_end(std::size_t expected);

  private:
    number_cells cells_;
    std::uint64_t line_;
    std::size_t count_ = 0; // cells taken
};

/// Reads one row with `read`, which fills a new one of `samples`. Where the last line of a file has
/// no end and is no row, the file was cut: that is noted, and false.
template <typename Read>
bool read_row_or_note_end(const line_reader& lines, sample_rows& samples, schema::warnings& notes,
                          Read read) {
    try {
        read(samples.add());
        return true;
    } catch (const text_error& error) {
        if (lines.is_complete())
            throw;
        samples.remove_last();
        notes.add("{}; the file ends there, and the row is left out", error.what());
        return false;
    }
}

} // namespace opensim
