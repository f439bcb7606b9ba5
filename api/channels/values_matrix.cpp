#include "store/python.hpp"

#include "api/channels/values_matrix.hpp"

#include <algorithm>
#include <array>
#include <limits>
#include <map>
#include <optional>

#include <strata/access/strided_read.hpp>

#include "acquisition/layout.hpp"
#include "store/store_log.hpp"
#include "store/typed_access.hpp"

namespace mox {

namespace {

/// Rows filled for all channels before the next ones: as many as stay in the cache.
constexpr std::uint64_t bytes_per_block = 256 * 1024;

std::optional<std::int32_t> index_of(const strata::data_set& set) {
    const auto attribute = set.retrieve_attribute(layout::attribute::relative_set_index);
    if (!attribute) return std::nullopt;
    return read<std::int32_t>(attribute);
}

/// The sets that have an index, by index; of several with one index the last counts.
std::map<std::int32_t, strata::data_set> by_index(const std::vector<strata::data_set>& sets) {
    std::map<std::int32_t, strata::data_set> indexed;
    for (const auto& set : sets) {
        if (const auto index = index_of(set)) indexed.insert_or_assign(*index, set);
    }
    return indexed;
}

struct matrix_extent {
    std::uint64_t components; ///< columns of a channel
    std::uint64_t rows;
};

matrix_extent extent_of(const strata::data_set& set) {
    const auto shape = set.shape(false);
    const auto& dimensions = shape.dimensions();
    std::uint64_t components = 1;
    for (std::size_t i = 0; i + 1 < dimensions.size(); ++i) components *= static_cast<std::uint64_t>(dimensions[i]);
    return {components, components == 0 ? 0 : shape.element_count() / components};
}

/// One channel's place in the matrix.
struct column_block {
    strata::data_set set;
    std::uint64_t first_column;
    matrix_extent extent;
};

/// Copies rows of one channel; false when the store cannot give them as numbers.
bool fill_rows(const column_block& block, double* matrix, std::uint64_t width, std::uint64_t components,
               std::uint64_t first_row, std::uint64_t rows) {
    const auto end = std::min(first_row + rows, block.extent.rows);
    if (end <= first_row) return true;
    const auto stride = static_cast<std::ptrdiff_t>(width);
    double* destination = matrix + first_row * width + block.first_column;
    if (block.extent.components == components)
        return strata::read_interleaved(block.set, 0, first_row, end - first_row, destination, stride);
    bool complete = true;
    for (std::uint64_t component = 0; component < std::min(components, block.extent.components); ++component) {
        complete = strata::read_strided(block.set, 0, component, first_row, end - first_row, destination + component,
                                        stride) &&
                   complete;
    }
    return complete;
}

/// NaN into the columns from `first_column` up to, and without, `last_column`.
void clear_columns(double* matrix, std::uint64_t width, std::uint64_t rows, std::uint64_t first_column,
                   std::uint64_t last_column) {
    if (first_column >= last_column) return;
    for (std::uint64_t row = 0; row < rows; ++row) {
        double* cells = matrix + row * width;
        std::fill(cells + first_column, cells + last_column, std::numeric_limits<double>::quiet_NaN());
    }
}

} // namespace

py_ref values_matrix(const std::vector<strata::data_set>& sets) {
    if (sets.empty()) return py_ref::checked(PyArray_ZEROS(0, nullptr, NPY_DOUBLE, 0));
    const auto indexed = by_index(sets);
    const auto first = indexed.empty() ? extent_of(sets.front()) : extent_of(indexed.begin()->second);
    const auto rows = indexed.empty() ? 0 : first.rows;
    const auto width = sets.size() * first.components;
    std::array<npy_intp, 2> shape{static_cast<npy_intp>(rows), static_cast<npy_intp>(width)};
    auto array = py_ref::checked(PyArray_SimpleNew(2, shape.data(), NPY_DOUBLE));
    auto* matrix = static_cast<double*>(PyArray_DATA(array.array()));

    std::vector<column_block> blocks;
    bool complete = true; // every channel has as many rows and columns as its place in the matrix
    for (const auto& [index, set] : indexed) {
        const auto extent = extent_of(set);
        complete = complete && extent.rows >= rows && extent.components >= first.components;
        blocks.push_back({set, blocks.size() * first.components, extent});
    }
    clear_columns(matrix, width, rows, complete ? blocks.size() * first.components : 0, width);
    const auto step = std::max<std::uint64_t>(1, bytes_per_block / (sizeof(double) * std::max<std::uint64_t>(1, width)));
    for (std::uint64_t row = 0; row < rows; row += step) {
        for (const auto& block : blocks) {
            const auto count = std::min(step, rows - row);
            if (fill_rows(block, matrix, width, first.components, row, count)) continue;
            log_store_failure(store_failure::read_set);
            clear_columns(matrix + row * width, width, count, block.first_column, block.first_column + first.components);
        }
    }
    return array;
}

} // namespace mox
