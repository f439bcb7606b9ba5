#pragma once

#include <cstdint>
#include <utility>
#include <vector>

namespace strata {

/// Extent of an attribute, a data set or a selection: dimensions from the slowest to the fastest
/// varying. No dimensions denote a single value.
class data_shape {
  public:
    /// A single value. The flag is kept for the interface and has no effect in this store.
    explicit data_shape(bool /*flag*/ = false) noexcept {}
    data_shape(std::vector<std::int64_t> dimensions, bool /*flag*/) noexcept
        : dimensions_(std::move(dimensions)) {}

    [[nodiscard]] const std::vector<std::int64_t>& dimensions() const noexcept {
        return dimensions_;
    }

    /// Product of the dimensions, 1 for none, 0 where one is 0.
    [[nodiscard]] std::uint64_t element_count() const noexcept {
        std::uint64_t count = 1;
        for (auto extent : dimensions_)
            count *= static_cast<std::uint64_t>(extent);
        return count;
    }

  private:
    std::vector<std::int64_t> dimensions_;
};

/// True when both shapes have the same dimensions.
[[nodiscard]] inline bool operator==(const data_shape& left, const data_shape& right) noexcept {
    return left.dimensions() == right.dimensions();
}

} // namespace strata
