#include "platform/strata/src/elements/dimensions.hpp"

#include <limits>
#include <string>
#include <vector>

#include <strata/store_error.hpp>

namespace strata::detail {

namespace {

// No element takes more than this: texts are held as std::string.
constexpr std::uint64_t largest_element = sizeof(std::string);
constexpr std::uint64_t most_elements =
    static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()) / largest_element;

[[noreturn]] void throw_too_many_dimensions(std::uint64_t rank) {
    throw store_error{"A shape has at most " + std::to_string(maximum_rank) + " dimensions, not " +
                      std::to_string(rank)};
}

[[noreturn]] void throw_negative_extent(std::int64_t extent) {
    throw store_error{"An extent is not negative, " + std::to_string(extent) + " was given"};
}

[[noreturn]] void throw_not_addressable() {
    throw store_error{"A shape has more elements than can be addressed"};
}

} // namespace

dimensions::dimensions(const data_shape& shape) {
    const auto& given = shape.dimensions();
    if (given.size() > maximum_rank)
        throw_too_many_dimensions(given.size());
    for (auto extent : given) {
        if (extent < 0)
            throw_negative_extent(extent);
        append(static_cast<std::uint64_t>(extent));
    }
    require_addressable();
}

dimensions::dimensions(const std::uint64_t* extents, std::uint64_t rank) {
    if (rank > maximum_rank)
        throw_too_many_dimensions(rank);
    for (std::uint64_t i = 0; i < rank; ++i)
        append(extents[i]);
    require_addressable();
}

void dimensions::append(std::uint64_t extent) {
    if (extent > most_elements)
        throw_not_addressable();
    extents_[rank_++] = extent;
}

void dimensions::require_addressable() const {
    // Empty dimensions are left out, so that no later product of some of the extents overflows
    // either.
    std::uint64_t product = 1;
    for (std::size_t i = 0; i < rank_; ++i) {
        if (extents_[i] == 0)
            continue;
        if (product > most_elements / extents_[i])
            throw_not_addressable();
        product *= extents_[i];
    }
}

std::uint64_t dimensions::count() const noexcept {
    std::uint64_t product = 1;
    for (std::size_t i = 0; i < rank_; ++i)
        product *= extents_[i];
    return product;
}

data_shape dimensions::shape() const { return shape_of(extents_, rank_); }

element_box dimensions::whole() const noexcept {
    return {.offset = {}, .extent = extents_, .rank = rank_};
}

bool dimensions::contain(const element_box& box) const noexcept {
    if (box.rank != rank_)
        return false;
    for (std::size_t i = 0; i < rank_; ++i) {
        if (box.offset[i] > extents_[i] || box.extent[i] > extents_[i] - box.offset[i])
            return false;
    }
    return true;
}

data_shape shape_of(const std::array<std::uint64_t, maximum_rank>& extents, std::size_t rank) {
    std::vector<std::int64_t> shape(rank);
    for (std::size_t i = 0; i < rank; ++i)
        shape[i] = static_cast<std::int64_t>(extents[i]);
    return data_shape{std::move(shape), false};
}

} // namespace strata::detail
