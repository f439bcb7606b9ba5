#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include <strata/plugin/channel_buffer.hpp>

namespace c3d {

/// A run of elements of a channel, and the singles that a file holds for them:
///
///     ((element − offset) × factor) ÷ divisor + shift
///
/// The arithmetic is left out where nothing would change, so that singles which were read are
/// written as they were, bit by bit.
class sample_source {
  public:
    sample_source() = default;
    /// The values of the elements.
    explicit sample_source(const strata::channel_buffer& buffer, std::uint64_t first = 0);
    /// The raw values of an analog channel.
    sample_source(const strata::channel_buffer& buffer, double divisor, double shift);

    /// Of values: the same divided by `divisor`.
    [[nodiscard]] sample_source divided(double divisor) const;

    /// `count` singles from `index` on: those of the store where they can be used as they are, else
    /// computed ones, for which `scratch` has room.
    [[nodiscard]] const float* singles(std::size_t index, std::size_t count,
                                       float* scratch) const noexcept;

    /// The first of `computed`, the singles from `index` on, that is infinite although the value is
    /// not; none when there is no such.
    [[nodiscard]] std::optional<std::size_t>
    first_overflow(std::size_t index, std::span<const float> computed) const noexcept;

  private:
    strata::channel_buffer buffer_; // keeps the elements alive
    std::uint64_t first_ = 0;
    double divisor_ = 1.0;
    double shift_ = 0.0;
    bool raw_ = false; // elements are what the file holds, but for their type
};

} // namespace c3d
