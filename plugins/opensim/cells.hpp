#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace opensim {

/// A text without blanks and tabs at both ends.
[[nodiscard]] std::string_view trimmed(std::string_view text) noexcept;

/// ASCII letters as small ones.
[[nodiscard]] std::string lower_case(std::string_view text);

/// The cells of a line of words. Where it has a tab, a cell is what lies between tabs and may be
/// empty or have blanks in it, and empty ones at the end are none; otherwise cells are what lies
/// between blanks.
[[nodiscard]] std::vector<std::string_view> cells_of(std::string_view line);

/// The numbers of a row, cell by cell. A cell ends at a tab, with blanks around it, or at blanks.
class number_cells {
  public:
    explicit number_cells(std::string_view line) noexcept
        : at_(line.data()), end_(line.data() + line.size()) {}

    enum class kind { number, empty, malformed, none };

    /// Goes to the next cell; `none` behind the last. What is no number of double precision is
    /// malformed; NaN and infinity are numbers.
    kind next();

    /// Of the cell.
    [[nodiscard]] double value() const noexcept { return value_; }
    [[nodiscard]] std::string_view text() const noexcept { return text_; }

  private:
    void leave_cell() noexcept;

    const char* at_;
    const char* end_;
    bool is_done_ = false;
    double value_ = 0.0;
    std::string_view text_;
};

} // namespace opensim
