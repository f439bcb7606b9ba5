#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include <strata/detail/element_box.hpp>

#include "platform/strata/src/elements/dimensions.hpp"

namespace strata::detail {

/// Where the elements of an array lie: in one row, or in a row for each index along one dimension,
/// the axis. Within a row, elements lie in row-major order of the other dimensions.
class element_layout {
  public:
    /// One row.
    explicit element_layout(const dimensions& extents) noexcept
        : element_layout(extents, no_axis) {}

    /// A row for each index of the dimension `axis`, which is not the last one.
    [[nodiscard]] static element_layout along(const dimensions& extents,
                                              std::size_t axis) noexcept {
        return {extents, axis};
    }

    /// The layout of a set of numbers: three dimensions are components, channels and samples, and
    /// have a row for each channel. One row for absurdly many channels, where keeping books on each
    /// would take more memory than the elements.
    [[nodiscard]] static element_layout of_set(const dimensions& extents) noexcept;

    [[nodiscard]] const dimensions& extents() const noexcept { return extents_; }
    [[nodiscard]] bool has_axis() const noexcept { return axis_ != no_axis; }
    [[nodiscard]] std::size_t axis() const noexcept { return axis_; }
    [[nodiscard]] std::uint64_t rows() const noexcept { return has_axis() ? extents_[axis_] : 1; }
    [[nodiscard]] std::uint64_t row_elements() const noexcept { return row_elements_; }

    /// Elements from one index to the next along a dimension, within a row; 0 for the axis.
    [[nodiscard]] std::uint64_t stride(std::size_t dimension) const noexcept {
        return strides_[dimension];
    }

  private:
    element_layout(const dimensions& extents, std::size_t axis) noexcept;

    static constexpr std::size_t no_axis = maximum_rank;

    dimensions extents_;
    std::size_t axis_;
    std::array<std::uint64_t, maximum_rank> strides_{};
    std::uint64_t row_elements_ = 1;
};

} // namespace strata::detail
