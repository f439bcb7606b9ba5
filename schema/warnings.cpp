#include "schema/warnings.hpp"

#include <algorithm>

#include <anvil/logging.hpp>

#include <strata/strata_logger.hpp>

namespace schema {

namespace {

/// A damaged parameter section can have something odd in every record; a log is for reading.
constexpr std::size_t most_texts = 40;

} // namespace

void warnings::keep(std::string text) {
    if (std::find(texts_.begin(), texts_.end(), text) != texts_.end())
        return;
    if (texts_.size() == most_texts) {
        ++left_out_;
        return;
    }
    texts_.push_back(std::move(text));
}

void warnings::add_all(const warnings& others) {
    for (const auto& text : others.texts_)
        keep(text);
    left_out_ += others.left_out_;
}

std::vector<std::string> warnings::lines() const {
    auto lines = texts_;
    if (left_out_ != 0)
        lines.push_back(fmt::format("{} more warnings left out", left_out_));
    return lines;
}

void warnings::log(const std::string& file_name) const {
    const auto logger = get_strata_logger();
    if (!logger)
        return;
    for (const auto& line : lines()) {
        anvil::log_line(*logger, anvil::log_level::warning,
                        fmt::format("'{}': {}", file_name, line));
    }
}

} // namespace schema
