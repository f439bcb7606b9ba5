#include "schema/table_shape.hpp"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>
#include <utility>

namespace schema {

namespace {

std::int64_t product_of(const std::vector<std::int64_t>& extents) {
    return std::accumulate(extents.begin(), extents.end(), std::int64_t{1}, std::multiplies<>());
}

/// Dimensions of 1 do not move a number.
std::vector<std::int64_t> without_ones(std::vector<std::int64_t> extents) {
    std::erase(extents, 1);
    return extents;
}

/// True when the platforms come last instead of first.
bool are_reversed(const std::vector<std::int64_t>& extents, std::size_t platforms) {
    const auto count = static_cast<std::int64_t>(platforms);
    return extents.front() != count && extents.back() == count;
}

std::optional<matrix_extent> square_of(std::int64_t elements) {
    const auto edge = static_cast<std::int64_t>(std::lround(std::sqrt(elements)));
    if (edge * edge != elements)
        return std::nullopt;
    return matrix_extent{static_cast<std::size_t>(edge), static_cast<std::size_t>(edge)};
}

/// Matrices of which each is one dimension, or all columns are.
std::optional<matrix_extent> extent_of_flattened(const std::vector<std::int64_t>& extents,
                                                 std::size_t platforms, std::size_t least) {
    const auto total = product_of(extents);
    const auto count = static_cast<std::int64_t>(std::max<std::size_t>(platforms, 1));
    auto extent = total % count == 0 ? square_of(total / count) : std::nullopt;
    if (extents.size() < 2)
        return extent && extent->rows >= least ? extent : matrix_extent{least, least};
    const auto last = static_cast<std::size_t>(extents.back());
    return extent && (last == extent->rows || last == extent->elements()) ? extent : std::nullopt;
}

} // namespace

bool has_blocks(const std::vector<std::int64_t>& extents, const std::vector<std::int64_t>& inner) {
    const auto total = product_of(extents);
    const auto dimensions = without_ones(extents);
    std::int64_t behind = 1; // product of the dimensions from the one looked at on
    for (auto extent = dimensions.rbegin(); extent != dimensions.rend(); ++extent) {
        behind *= *extent;
        std::int64_t boundary = 1;
        const bool is_boundary =
            behind == total || std::any_of(inner.rbegin(), inner.rend(), [&](std::int64_t each) {
                return (boundary *= each) == behind;
            });
        if (!is_boundary)
            return false;
    }
    return true;
}

bool has_lists(std::vector<std::int64_t> extents, std::int64_t count) {
    extents = without_ones(std::move(extents));
    const auto dimensions = extents.size();
    if (dimensions >= 2) {
        const auto pair = std::minmax(extents[dimensions - 2], extents[dimensions - 1]);
        if (pair.first == 2 && pair.first * pair.second == count) {
            extents.pop_back();
            extents.back() = count;
        }
    }
    return has_blocks(extents, {count});
}

std::optional<std::size_t> width_of_rows(const std::vector<std::int64_t>& extents,
                                         std::size_t platforms, std::size_t least) {
    const auto dimensions = without_ones(extents);
    if (dimensions.size() < 2)
        return 0;
    const auto width = static_cast<std::size_t>(dimensions.back());
    const bool has_rows = dimensions.front() == static_cast<std::int64_t>(platforms);
    if (dimensions.size() > 2 || width == 0 ||
        (!has_rows && (width < least || are_reversed(dimensions, platforms))))
        return std::nullopt;
    return width;
}

std::optional<matrix_extent> extent_of_matrices(const std::vector<std::int64_t>& extents,
                                                std::size_t platforms, std::size_t least) {
    const auto dimensions = without_ones(extents);
    const auto count = dimensions.size();
    const bool is_single =
        count == 2 && (platforms <= 1 || dimensions.front() == dimensions.back());
    std::optional<matrix_extent> extent;
    if (is_single || (count == 3 && !are_reversed(dimensions, platforms))) {
        extent = {static_cast<std::size_t>(dimensions[count - 1]),
                  static_cast<std::size_t>(dimensions[count - 2])};
    } else if (count < 3) {
        extent = extent_of_flattened(dimensions, platforms, least);
    }
    return extent && std::min(extent->rows, extent->columns) >= least ? extent : std::nullopt;
}

} // namespace schema
