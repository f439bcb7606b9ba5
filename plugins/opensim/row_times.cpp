#include "plugins/opensim/row_times.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

#include <fmt/format.h>

#include "plugins/opensim/even_steps.hpp"
#include "plugins/opensim/number_text.hpp"
#include "plugins/opensim/text_error.hpp"

namespace opensim {

namespace {

/// Frames that a C3D file can number.
constexpr double largest_frame = 4294967295.0;

} // namespace

void row_times::add(double seconds, std::string_view text, std::uint64_t line) {
    if (!rows_.empty() && seconds < rows_.back().seconds) {
        throw text_error(line, "the time", fmt::format("more than {}", rows_.back().seconds),
                         fmt::format("{}", seconds));
    }
    const auto digits = digits_of(text);
    places_ = std::max(places_, digits.places);
    significant_ = std::max(significant_, digits.significant);
    rows_.push_back({seconds, line});
}

/// A time may be off by half a unit of its last digit, and by the rounding of single precision.
written_time row_times::written(double seconds) const noexcept {
    const auto magnitude = std::abs(seconds);
    const auto unit_by_places = std::pow(10.0, -places_);
    const auto unit_by_digits =
        magnitude > 0.0 ? std::pow(10.0, std::floor(std::log10(magnitude)) + 1 - significant_)
                        : 0.0;
    return {seconds, std::max(unit_by_places, unit_by_digits) / 2,
            magnitude * double{std::numeric_limits<float>::epsilon()}};
}

/// How far that is together; a step of whole units is off by less than one.
double row_times::rounding(const timed_row& timed) const noexcept {
    constexpr double nearly = 1.0 - 1e-6;
    const auto time = written(timed.seconds);
    return nearly * time.half_unit + time.slack;
}

/// Names the first row whose step is not the usual one.
void row_times::refuse_uneven() const {
    std::vector<double> steps;
    for (std::size_t i = 1; i < rows_.size(); ++i)
        steps.push_back(rows_[i].seconds - rows_[i - 1].seconds);
    auto sorted = steps;
    const auto middle = sorted.begin() + static_cast<std::ptrdiff_t>(sorted.size() / 2);
    std::ranges::nth_element(sorted, middle);
    const auto usual = *middle;
    std::size_t culprit = 1;
    double worst = -std::numeric_limits<double>::infinity();
    for (std::size_t i = 1; i < rows_.size() && worst <= 0.0; ++i) {
        const auto excess =
            std::abs(steps[i - 1] - usual) - rounding(rows_[i - 1]) - rounding(rows_[i]);
        if (excess > worst) {
            culprit = i;
            worst = excess;
        }
    }
    const auto& before = rows_[culprit - 1];
    throw text_error(
        rows_[culprit].line, "the time",
        usual > 0.0 ? fmt::format("{:.6g} s after {}, as between other rows", usual, before.seconds)
                    : fmt::format("more than {}", before.seconds),
        fmt::format("{}", rows_[culprit].seconds));
}

double row_times::decide_rate(std::optional<double> told, schema::warnings& notes) const {
    if (rows_.size() < 2) {
        if (!told)
            notes.add("{} rows tell no rate; it is 0 Hz", rows_.size());
        return told.value_or(0.0);
    }
    std::vector<written_time> times;
    times.reserve(rows_.size());
    for (const auto& timed : rows_)
        times.push_back(written(timed.seconds));
    const even_steps steps(std::move(times));
    if (told && steps.allow(*told))
        return *told;
    const auto rate = steps.rate();
    if (!rate)
        refuse_uneven();
    if (told)
        notes.add("the header says {} Hz, the times of the rows say {} Hz; these count", *told,
                  *rate);
    return *rate;
}

std::uint64_t row_times::first_frame(double rate, schema::warnings& notes) const {
    const auto& first = rows_.front();
    const auto before = rate * first.seconds;
    const auto nearest = std::round(before);
    if (nearest < 0.0 || nearest + static_cast<double>(rows_.size()) > largest_frame) {
        notes.add("time begins at {} s, for which there is no frame number; it begins at 0 s here",
                  first.seconds);
        return 1;
    }
    if (std::abs(before - nearest) > rate * rounding(first)) {
        notes.add("time begins at {} s, between two frames; it begins at {} s here, which is frame "
                  "{}",
                  first.seconds, nearest / rate, nearest + 1.0);
    }
    return static_cast<std::uint64_t>(nearest) + 1;
}

time_base row_times::decide(std::optional<double> told, schema::warnings& notes) const {
    time_base base;
    base.frames = rows_.size();
    base.rate = decide_rate(told, notes);
    if (base.rate > 0.0 && !rows_.empty())
        base.first_frame = first_frame(base.rate, notes);
    return base;
}

} // namespace opensim
