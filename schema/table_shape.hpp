#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace schema {

// What the dimensions of a stored table, the platforms first, say of the place of each platform's
// numbers. Tables are flattened by scripts, which keeps the order of their numbers, and given with
// the dimensions the other way round, which does not: what may be the latter has no shape here.

/// True when the numbers of each platform, `inner` dimensions of them, follow one another.
[[nodiscard]] bool has_blocks(const std::vector<std::int64_t>& extents,
                              const std::vector<std::int64_t>& inner);

/// The same for `count` numbers of each platform, which some files give two dimensions, 2 and half
/// of them in either order.
[[nodiscard]] bool has_lists(std::vector<std::int64_t> extents, std::int64_t count);

/// Numbers of each platform in a table whose width the file chooses, with `platforms` rows, at
/// least `least` wide when there are others; nothing for other dimensions. A single dimension has
/// the width 0, since it does not tell.
[[nodiscard]] std::optional<std::size_t> width_of_rows(const std::vector<std::int64_t>& extents,
                                                       std::size_t platforms, std::size_t least);

/// Rows and columns of the matrices of a table.
struct matrix_extent {
    std::size_t rows = 0;
    std::size_t columns = 0;

    [[nodiscard]] std::size_t elements() const noexcept { return rows * columns; }
};

/// The extent of the matrices, stored column by column; nothing when one is less than `least` or
/// the dimensions tell none.
[[nodiscard]] std::optional<matrix_extent>
extent_of_matrices(const std::vector<std::int64_t>& extents, std::size_t platforms,
                   std::size_t least);

} // namespace schema
