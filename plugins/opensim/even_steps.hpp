#pragma once

#include <optional>
#include <vector>

namespace opensim {

/// A time as it is written, in seconds.
struct written_time {
    double seconds;
    double half_unit; ///< of its last digit
    double slack;     ///< how much farther the instant may be that was meant
};

/// Rows of which each was written at the same step behind the one before, and what steps these may
/// have been before the times were rounded to their digits. There are two times at least.
class even_steps {
  public:
    explicit even_steps(std::vector<written_time> times);

    /// Whether the times can be those of a rate, in Hz.
    [[nodiscard]] bool allow(double rate) const noexcept;

    /// The rate with the fewest digits in it or in its step that the times can have; nothing where
    /// they are uneven.
    [[nodiscard]] std::optional<double> rate() const noexcept;

  private:
    /// How exactly times are what instants become that are rounded.
    enum class rule {
        whole_units, ///< steps are units of the last digit, which never jump by one
        no_halves,   ///< no instant lies halfway between two times
        any,
    };
    struct fit {
        double room;          ///< for the first instant, in seconds; below 0 there is none
        bool is_step_too_big; ///< where there is none
    };

    [[nodiscard]] static double around(const written_time& time, rule exactness) noexcept;
    [[nodiscard]] fit fit_of(double step, rule exactness) const noexcept;
    [[nodiscard]] double units_off(double step) const noexcept;
    [[nodiscard]] bool is_whole(double step) const noexcept;
    [[nodiscard]] bool may_lack_a_row(double step) const noexcept;
    [[nodiscard]] std::optional<double> some_step() const noexcept;
    [[nodiscard]] std::optional<double> rate_near(double rate) const noexcept;
    [[nodiscard]] std::optional<double> rate_with_halves(double rate) const noexcept;

    std::vector<written_time> times_;
    double unit_ = 0.0; ///< the largest
};

} // namespace opensim
