#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include <strata/data_shape.hpp>
#include <strata/detail/element_box.hpp>

namespace strata::detail {

/// Extents of an element array that can exist, from the slowest to the fastest varying. None: a
/// single element.
class dimensions {
  public:
    dimensions() noexcept = default;

    /// Throws store_error for a negative extent, more than maximum_rank of them, or more elements
    /// than can be addressed.
    explicit dimensions(const data_shape& shape);
    dimensions(const std::uint64_t* extents, std::uint64_t rank);

    [[nodiscard]] std::size_t rank() const noexcept { return rank_; }
    [[nodiscard]] std::uint64_t operator[](std::size_t index) const noexcept {
        return extents_[index];
    }
    [[nodiscard]] std::uint64_t count() const noexcept;
    [[nodiscard]] data_shape shape() const;
    [[nodiscard]] bool operator==(const dimensions&) const noexcept = default;

    /// The block that is the whole array.
    [[nodiscard]] element_box whole() const noexcept;

    /// Whether `box` has this rank and stays inside.
    [[nodiscard]] bool contain(const element_box& box) const noexcept;

  private:
    void append(std::uint64_t extent);
    void require_addressable() const;

    std::array<std::uint64_t, maximum_rank> extents_{};
    std::size_t rank_ = 0;
};

/// The first `rank` of `extents` as the shape that users see.
[[nodiscard]] data_shape shape_of(const std::array<std::uint64_t, maximum_rank>& extents,
                                  std::size_t rank);

} // namespace strata::detail
