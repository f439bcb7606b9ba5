#include "store/python.hpp"

#include "api/channels/values_matrix.hpp"

#include <algorithm>
#include <array>
#include <limits>
#include <map>
#include <optional>

#include <strata/access/fill_matrix.hpp>
#include <strata/access/strided_read.hpp>

#include "schema/names.hpp"
#include "store/store_log.hpp"
#include "store/typed_access.hpp"

namespace mox {

namespace {

std::optional<std::int32_t> index_of(const strata::data_set& set) {
    const auto attribute = set.retrieve_attribute(schema::attribute::relative_set_index);
    if (!attribute)
        return std::nullopt;
    return read<std::int32_t>(attribute);
}

/// The sets that have an index, by index; of several with one index the last counts.
std::map<std::int32_t, strata::data_set> by_index(const std::vector<strata::data_set>& sets) {
    std::map<std::int32_t, strata::data_set> indexed;
    for (const auto& set : sets) {
        if (const auto index = index_of(set))
            indexed.insert_or_assign(*index, set);
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
    for (std::size_t i = 0; i + 1 < dimensions.size(); ++i)
        components *= static_cast<std::uint64_t>(dimensions[i]);
    return {components, components == 0 ? 0 : shape.element_count() / components};
}

/// Fills a matrix from channels that do not all have its rows and columns; what they lack is NaN.
void fill_unequal(const std::vector<strata::matrix_columns>& columns, std::uint64_t components,
                  std::uint64_t rows, std::uint64_t width, double* matrix) {
    std::fill_n(matrix, rows * width, std::numeric_limits<double>::quiet_NaN());
    for (const auto& [set, channel, first] : columns) {
        const auto extent = extent_of(set);
        for (std::uint64_t component = 0; component < std::min(components, extent.components);
             ++component) {
            if (!strata::read_strided(set, channel, component, 0, std::min(rows, extent.rows),
                                      matrix + first + component,
                                      static_cast<std::ptrdiff_t>(width)))
                log_store_failure(store_failure::read_set);
        }
    }
}

} // namespace

py_ref values_matrix(const std::vector<strata::data_set>& sets) {
    // Kept: without channels there are no dimensions.
    if (sets.empty())
        return py_ref::checked(PyArray_ZEROS(0, nullptr, NPY_DOUBLE, 0));
    const auto indexed = by_index(sets);
    const auto first =
        indexed.empty() ? extent_of(sets.front()) : extent_of(indexed.begin()->second);
    const auto rows = indexed.empty() ? 0 : first.rows;
    const auto width = sets.size() * first.components;
    std::array<npy_intp, 2> shape{static_cast<npy_intp>(rows), static_cast<npy_intp>(width)};
    auto array = py_ref::checked(PyArray_SimpleNew(2, shape.data(), NPY_DOUBLE));
    auto* matrix = static_cast<double*>(PyArray_DATA(array.array()));

    std::vector<strata::matrix_columns> columns;
    bool equal = true;
    for (const auto& [index, set] : indexed) {
        const auto extent = extent_of(set);
        equal = equal && extent.rows == rows && extent.components == first.components;
        columns.push_back({set, 0, columns.size() * first.components});
    }
    if (!equal || !strata::fill_matrix(columns, rows, width, matrix))
        fill_unequal(columns, first.components, rows, width, matrix);
    return array;
}

} // namespace mox
