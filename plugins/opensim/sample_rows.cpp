#include "plugins/opensim/sample_rows.hpp"

#include <algorithm>
#include <limits>

#include <strata/data_type.hpp>

namespace opensim {

namespace {

/// A block is turned into columns while it is in the cache.
constexpr std::size_t block_numbers = 65536;

} // namespace

sample_rows::sample_rows(std::size_t columns)
    : columns_(columns),
      rows_in_block_(std::max<std::size_t>(block_numbers / std::max<std::size_t>(columns, 1), 1)) {}

std::span<double> sample_rows::add() {
    const auto place = static_cast<std::size_t>(rows_ % rows_in_block_);
    if (place == 0 && rows_ / rows_in_block_ == blocks_.size())
        blocks_.push_back(std::make_unique_for_overwrite<double[]>(columns_ * rows_in_block_));
    ++rows_;
    const std::span row(blocks_.back().get() + place * columns_, columns_);
    std::ranges::fill(row, std::numeric_limits<double>::quiet_NaN());
    return row;
}

std::vector<strata::channel_buffer> sample_rows::take_channels(std::size_t columns_of_channel) {
    auto channels = strata::channel_buffer::allocate(
        strata::data_type::float64, columns_of_channel * rows_, columns_ / columns_of_channel);
    const auto rows = static_cast<std::size_t>(rows_);
    for (std::size_t first = 0; first < rows; first += rows_in_block_) {
        const auto block = std::move(blocks_[first / rows_in_block_]);
        const auto count = std::min(rows_in_block_, rows - first);
        for (std::size_t column = 0; column < columns_; ++column) {
            const auto numbers = numbers_of(channels[column / columns_of_channel]);
            const auto target = numbers.subspan(column % columns_of_channel * rows + first, count);
            const auto* source = block.get() + column;
            for (auto& number : target) {
                number = *source;
                source += columns_;
            }
        }
    }
    blocks_.clear();
    rows_ = 0;
    return channels;
}

} // namespace opensim
