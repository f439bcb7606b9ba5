#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include <strata/plugin/channel_buffer.hpp>

namespace opensim {

/// Rows of numbers that become channels once there are no more. They are kept in blocks, and each
/// is freed as soon as it is in the channels, so that memory for both is never needed.
class sample_rows {
  public:
    /// Of `columns` numbers each.
    explicit sample_rows(std::size_t columns);

    /// One more row, all NaN.
    [[nodiscard]] std::span<double> add();
    void remove_last() noexcept { --rows_; }

    [[nodiscard]] std::uint64_t count() const noexcept { return rows_; }

    /// `float64` buffers, each of the next `columns_of_channel` columns, one column behind the
    /// other. No row is left.
    [[nodiscard]] std::vector<strata::channel_buffer> take_channels(std::size_t columns_of_channel);

  private:
    std::size_t columns_;
    std::size_t rows_in_block_;
    std::uint64_t rows_ = 0;
    std::vector<std::unique_ptr<double[]>> blocks_;
};

/// The numbers of a buffer of take_channels.
[[nodiscard]] inline std::span<double> numbers_of(const strata::channel_buffer& buffer) noexcept {
    return {reinterpret_cast<double*>(buffer.data()), static_cast<std::size_t>(buffer.count())};
}

} // namespace opensim
