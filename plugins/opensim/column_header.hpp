#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "plugins/opensim/line_reader.hpp"
#include "schema/warnings.hpp"

namespace opensim {

/// What a header says of a number, and where.
struct told_count {
    std::string name; ///< as the file spells it
    std::uint64_t line = 0;
    double number = 0.0;
};

/// What stands before the rows of a MOT or an STO file.
struct column_header {
    std::optional<double> rate;      ///< Hz, above 0
    std::optional<told_count> rows;  ///< nRows or datarows
    std::vector<std::string> labels; ///< of all columns but the time
    std::vector<std::string> units;  ///< as many; empty ones where nothing tells them
};

/// Reads up to the first row. What contradicts the columns is noted. Throws text_error.
///
/// Behind the first, lines of the header are names and values ("nRows=5"); most say nothing of what
/// a trial has. "units=" has the unit of each column, with or without that of the time, or one for
/// all, separated by commas, tabs or blanks; "unit_NAME=" that of a column, or of those whose names
/// have an axis behind that ("NAME_x"); "force_unit=", "length_unit=" and "moment_unit=" those of
/// columns that are called as ground reactions are.
[[nodiscard]] column_header read_column_header(line_reader& lines, schema::warnings& notes);

} // namespace opensim
