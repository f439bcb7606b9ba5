#include "plugins/opensim/row_cells.hpp"

#include <cmath>
#include <string>

namespace opensim {

using kind = number_cells::kind;

double row_cells::finite_number(std::string_view what) {
    const auto found = cells_.next();
    ++count_;
    if (found != kind::number || !std::isfinite(cells_.value()))
        throw text_error(line_, what, "a number", shown(found == kind::none ? "" : cells_.text()));
    return cells_.value();
}

std::size_t row_cells::fill(std::span<double> row, infinities rule) {
    for (std::size_t i = 0; i < row.size(); ++i) {
        const auto found = cells_.next();
        if (found == kind::none)
            return i;
        ++count_;
        const bool is_refused = rule == infinities::refused && std::isinf(cells_.value());
        if (found == kind::number && !is_refused)
            row[i] = cells_.value();
        else if (found != kind::empty)
            throw text_error(line_, fmt::format("cell {}", count_), "a number or nothing",
                             shown(cells_.text()));
    }
    return row.size();
}

void row_cells::require_end(std::size_t expected) {
    for (auto found = cells_.next(); found != kind::none; found = cells_.next()) {
        ++count_;
        if (found != kind::empty)
            throw text_error(line_, "the row", fmt::format("{} cells", expected),
                             fmt::format("{} as cell {}", shown(cells_.text()), count_));
    }
}

} // namespace opensim
