#include "plugins/opensim/even_steps.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

namespace opensim {

namespace {

bool is_usable(double step) noexcept {
    return step > 0.0 && std::isfinite(step) && std::isfinite(1.0 / step);
}

double rounded(double number, double parts) noexcept { return std::round(number * parts) / parts; }

} // namespace

even_steps::even_steps(std::vector<written_time> times) : times_(std::move(times)) {
    for (const auto& time : times_)
        unit_ = std::max(unit_, 2.0 * time.half_unit);
}

/// How far from a time the instant may lie.
double even_steps::around(const written_time& time, rule exactness) noexcept {
    constexpr double nearly = 1.0 - 1e-6;
    constexpr double just_over = 1.0 + 1e-6;
    switch (exactness) {
    case rule::whole_units:
        return time.half_unit / 2 + time.slack;
    case rule::no_halves:
        // What is far below the digits must not make a half of what is none.
        return nearly * time.half_unit + (time.slack > time.half_unit / 100 ? time.slack : 0.0);
    case rule::any:
        break;
    }
    return just_over * time.half_unit + time.slack;
}

/// The first instant has to be early enough for each row and late enough for each: the two rows
/// that leave the least room tell which way a better step lies.
even_steps::fit even_steps::fit_of(double step, rule exactness) const noexcept {
    double latest = std::numeric_limits<double>::infinity();
    double earliest = -std::numeric_limits<double>::infinity();
    std::size_t row_of_latest = 0;
    std::size_t row_of_earliest = 0;
    for (std::size_t i = 0; i < times_.size(); ++i) {
        const auto first = times_[i].seconds - static_cast<double>(i) * step;
        const auto part = around(times_[i], exactness);
        if (first + part < latest) {
            latest = first + part;
            row_of_latest = i;
        }
        if (first - part > earliest) {
            earliest = first - part;
            row_of_earliest = i;
        }
    }
    return {latest - earliest, row_of_latest > row_of_earliest};
}

/// How many units the last row would be elsewhere if the step were the nearest of whole units.
double even_steps::units_off(double step) const noexcept {
    const auto units = step / unit_;
    return std::abs(units - std::round(units)) * static_cast<double>(times_.size() - 1);
}

bool even_steps::is_whole(double step) const noexcept {
    constexpr double none = 1e-3;
    return step > unit_ / 2 && units_off(step) < none;
}

/// With steps of about one unit, a row that is missing looks like the jump by which times are
/// rounded that have a slightly larger step. That is believed only where there are several.
bool even_steps::may_lack_a_row(double step) const noexcept {
    constexpr double several = 3.0;
    return std::round(step / unit_) == 1.0 && !is_whole(step) && units_off(step) < several;
}

bool even_steps::allow(double rate) const noexcept {
    const auto step = 1.0 / rate;
    return is_usable(step) &&
           fit_of(step, is_whole(step) ? rule::whole_units : rule::any).room >= 0.0;
}

/// Any step that leaves room, between the smallest and the largest that first and last row allow.
std::optional<double> even_steps::some_step() const noexcept {
    const auto& first = times_.front();
    const auto& last = times_.back();
    const auto steps = static_cast<double>(times_.size() - 1);
    const auto part = around(first, rule::any) + around(last, rule::any);
    auto smallest = (last.seconds - first.seconds - part) / steps;
    auto largest = (last.seconds - first.seconds + part) / steps;
    constexpr int halvings = 100; // as many as double precision can need
    for (int i = 0; i < halvings; ++i) {
        const auto step = smallest + (largest - smallest) / 2;
        const auto found = fit_of(step, rule::no_halves);
        if (found.room >= 0.0)
            return is_usable(step) ? std::optional(step) : std::nullopt;
        if (!(step > smallest && step < largest))
            return std::nullopt;
        (found.is_step_too_big ? largest : smallest) = step;
    }
    return std::nullopt;
}

/// Of a rate and of a step, from hundreds on to millionths, the first whose digits the times allow.
std::optional<double> even_steps::rate_near(double rate) const noexcept {
    for (const double parts : {1e-2, 1e-1, 1.0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6}) {
        if (const auto candidate = 1.0 / rounded(1.0 / rate, parts); allow(candidate))
            return candidate;
        if (const auto candidate = rounded(rate, parts); allow(candidate))
            return candidate;
    }
    return std::nullopt;
}

/// Where instants lie halfway between two times, these jump either way, and only the roundest rates
/// are believed.
std::optional<double> even_steps::rate_with_halves(double rate) const noexcept {
    for (const double parts : {1.0, 1e1, 1e2}) {
        if (const auto candidate = rounded(rate, parts); allow(candidate))
            return candidate;
    }
    return std::nullopt;
}

std::optional<double> even_steps::rate() const noexcept {
    const auto span = times_.back().seconds - times_.front().seconds;
    const auto mean = static_cast<double>(times_.size() - 1) / span;
    const auto step = some_step();
    const auto rate = step ? rate_near(mean).value_or(1.0 / *step) : rate_with_halves(mean);
    return rate && may_lack_a_row(1.0 / *rate) ? std::nullopt : rate;
}

} // namespace opensim
