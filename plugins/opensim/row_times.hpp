#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "plugins/opensim/even_steps.hpp"
#include "schema/warnings.hpp"

namespace opensim {

/// The time base of a trial: frame 1 is at 0 s.
struct time_base {
    std::uint64_t frames = 0;
    double rate = 0.0;             ///< Hz; 0 where nothing tells it
    std::uint64_t first_frame = 1; ///< number of the first row

    [[nodiscard]] double start_time_s() const noexcept {
        return rate > 0.0 ? static_cast<double>(first_frame - 1) / rate : 0.0;
    }
};

/// The times of the rows of a file.
///
/// They have to be even as far as their digits go: there has to be a step whose multiples, from
/// some first time on, give them when they are rounded as they are written, or to single precision
/// before that, as in many programs.
class row_times {
  public:
    /// The time of the next row, which stands in `line` as `text`. Throws text_error where it is
    /// before that of the last row.
    void add(double seconds, std::string_view text, std::uint64_t line);

    [[nodiscard]] std::uint64_t count() const noexcept { return rows_.size(); }

    /// The rate is `told`, what the file's header says, where the times agree with it; otherwise it
    /// is that of the times. The first frame is the one that is nearest to the first time. What
    /// does not fit is noted. Throws text_error where times are uneven.
    [[nodiscard]] time_base decide(std::optional<double> told, schema::warnings& notes) const;

  private:
    struct timed_row {
        double seconds;
        std::uint64_t line;
    };

    [[nodiscard]] written_time written(double seconds) const noexcept;
    [[nodiscard]] double rounding(const timed_row& timed) const noexcept;
    [[nodiscard]] std::uint64_t first_frame(double rate, schema::warnings& notes) const;
    [[nodiscard]] double decide_rate(std::optional<double> told, schema::warnings& notes) const;
    [[noreturn]] void refuse_uneven() const;

    std::vector<timed_row> rows_;
    int places_ = 0;      // most behind the point
    int significant_ = 0; // most of one time
};

} // namespace opensim
