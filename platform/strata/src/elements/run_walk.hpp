#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include <strata/detail/element_box.hpp>

#include "platform/strata/src/elements/element_layout.hpp"

namespace strata::detail {

/// Elements that lie side by side in one row.
struct element_run {
    std::uint64_t row = 0;   ///< index of the row
    std::uint64_t first = 0; ///< first element within the row
    std::uint64_t count = 0; ///< number of elements
};

/// Visits a block of an array in row-major order, as runs that are as long as they can be.
class run_walk {
  public:
    /// Requires that `box` lies within the layout's extents, and that both outlive the walk.
    run_walk(const element_layout& layout, const element_box& box) noexcept;

    /// The next run; false when there is none left.
    [[nodiscard]] bool next(element_run& run) noexcept;

  private:
    void advance() noexcept;

    const element_layout& layout_;
    const element_box& box_;
    // Of the coming run, relative to the block's offset.
    std::array<std::uint64_t, maximum_rank> index_{};
    std::size_t stepped_ = 0; // dimensions that are not part of a run
    element_run run_;         // the coming run
    bool done_;
};

} // namespace strata::detail
