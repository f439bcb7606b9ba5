#include "plugins/opensim/column_header.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string_view>
#include <unordered_map>
#include <utility>

#include <fmt/format.h>

#include "plugins/opensim/cells.hpp"
#include "plugins/opensim/column_file.hpp"
#include "plugins/opensim/number_text.hpp"
#include "plugins/opensim/text_error.hpp"
#include "schema/file_text.hpp"

namespace opensim {

namespace {

/// No file that a trial is written to holds more.
constexpr std::size_t most_columns = 65535;

/// "nRows=5" is a name and a value.
struct header_line {
    std::string_view name;
    std::string_view value;
};

/// "datarows 5" is one, too; with other names it is a remark ("Units are S.I. units").
header_line split_line(std::string_view line) {
    const auto text = trimmed(line);
    if (const auto at = text.find('='); at != std::string_view::npos)
        return {trimmed(text.substr(0, at)), trimmed(text.substr(at + 1))};
    const auto length = std::min(text.find_first_of(" \t"), text.size());
    const auto name = lower_case(text.substr(0, length));
    if (name != "datarows" && name != "datacolumns")
        return {};
    return {text.substr(0, length), trimmed(text.substr(length))};
}

std::vector<std::string> texts_of(const std::vector<std::string_view>& cells) {
    std::vector<std::string> texts;
    std::ranges::transform(cells, std::back_inserter(texts), schema::as_utf8);
    return texts;
}

/// Between commas a unit may be empty, as between tabs.
std::vector<std::string> units_in(std::string_view value) {
    if (value.find(',') == std::string_view::npos)
        return texts_of(cells_of(value));
    std::vector<std::string> units;
    for (;;) {
        const auto length = std::min(value.find(','), value.size());
        units.push_back(schema::as_utf8(trimmed(value.substr(0, length))));
        if (length == value.size())
            return units;
        value.remove_prefix(length + 1);
    }
}

constexpr std::string_view unit_prefix = "unit_";

/// The line that tells the unit of a ground reaction, by the names that its columns have; none of
/// other columns.
std::string quantity_of(std::string_view label) {
    if (label.starts_with("ground_torque_"))
        return "moment_unit";
    if (!label.starts_with("ground_force_") || label.size() < 3)
        return {};
    const auto end = label.substr(label.size() - 3);
    if (end.starts_with("_v"))
        return "force_unit";
    return end.starts_with("_p") ? "length_unit" : "";
}

class header_reader {
  public:
    header_reader(line_reader& lines, schema::warnings& notes) : lines_(lines), notes_(notes) {}

    column_header read() && {
        while (!at_end()) {
            // The first line is a name, whatever it is called.
            if (lines_.number() != 1)
                read_line(split_line(lines_.line()));
        }
        read_labels();
        spread_units();
        const auto columns = static_cast<double>(header_.labels.size() + 1);
        if (columns_ && columns_->number != columns) {
            notes_.add("line {}: {} is {}, but there are {} labels", columns_->line, columns_->name,
                       columns_->number, columns);
        }
        return std::move(header_);
    }

  private:
    bool at_end() {
        if (!lines_.next()) {
            throw text_error(lines_.number() + 1, "the header", "'endheader'",
                             "the end of the file");
        }
        return is_header_end(lines_.line());
    }

    void read_line(const header_line& line) {
        const auto name = lower_case(line.name);
        if (name == "nrows" || name == "datarows")
            header_.rows = count_told(line);
        else if (name == "ncolumns" || name == "datacolumns")
            columns_ = count_told(line);
        else if (name == "datarate")
            take_rate(line);
        else if (name == "units" || name == "unit")
            units_ = units_in(line.value);
        else if (name.starts_with(unit_prefix) || name.ends_with("_unit"))
            named_units_.emplace(line.name, schema::as_utf8(line.value));
        else if (name == "datatype" && lower_case(line.value) != "double")
            throw text_error(lines_.number(), "DataType", "double", shown(line.value));
    }

    std::optional<told_count> count_told(const header_line& line) const {
        const auto number = number_of(line.value);
        if (!number)
            return std::nullopt;
        return told_count{std::string(line.name), lines_.number(), *number};
    }

    void take_rate(const header_line& line) {
        const auto rate = number_of(line.value);
        if (rate && std::isfinite(*rate) && *rate > 0.0)
            header_.rate = rate;
        else
            notes_.add("line {}: DataRate is {}, no rate", lines_.number(), shown(line.value));
    }

    void read_labels() {
        if (!lines_.next_with_content()) {
            throw text_error(lines_.number() + 1, "the labels", "'time' and the labels",
                             "the end of the file");
        }
        auto cells = cells_of(lines_.line());
        if (lower_case(cells.front()) != "time") {
            throw text_error(lines_.number(), "the labels", "'time' first", shown(cells.front()));
        }
        cells.erase(cells.begin());
        if (cells.size() > most_columns) {
            throw text_error(lines_.number(), "the labels", fmt::format("at most {}", most_columns),
                             std::to_string(cells.size()));
        }
        header_.labels = texts_of(cells);
    }

    void spread_units() {
        const auto columns = header_.labels.size();
        if (units_.size() == columns + 1) {
            units_.erase(units_.begin());
        } else if (units_.size() == 1) {
            units_.resize(columns, units_.front());
        } else if (!units_.empty() && units_.size() != columns) {
            notes_.add("{} units are told for {} columns; none is believed", units_.size(),
                       columns);
            units_.clear();
        }
        units_.resize(columns);
        for (std::size_t i = 0; i < columns; ++i) {
            if (auto unit = named_unit(header_.labels[i]); !unit.empty())
                units_[i] = std::move(unit);
        }
        header_.units = std::move(units_);
    }

    /// What a line says of one column, of the three of a vector, or of all of a quantity.
    [[nodiscard]] std::string named_unit(const std::string& label) const {
        const auto without_axis =
            label.substr(0, label.size() - std::min<std::size_t>(label.size(), 2));
        for (const auto& key : {std::string(unit_prefix) + label,
                                std::string(unit_prefix) + without_axis, quantity_of(label)}) {
            if (const auto found = named_units_.find(key); found != named_units_.end())
                return found->second;
        }
        return {};
    }

    line_reader& lines_;
    schema::warnings& notes_;
    column_header header_;
    std::optional<told_count> columns_;
    std::vector<std::string> units_;
    std::unordered_map<std::string, std::string> named_units_;
};

} // namespace

column_header read_column_header(line_reader& lines, schema::warnings& notes) {
    return header_reader(lines, notes).read();
}

} // namespace opensim
