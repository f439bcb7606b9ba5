#include "store/python.hpp"

#include "api/devices/sample_rows.hpp"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

#include <strata/access/strided_read.hpp>

#include "store/numpy_types.hpp"

namespace mox {

namespace {

constexpr double no_value = std::numeric_limits<double>::quiet_NaN();
constexpr std::int64_t axes = 3;

py_ref array_of(std::vector<std::int64_t> extents) {
    return new_array(strata::data_shape(std::move(extents), false), NPY_DOUBLE);
}

double* elements_of(const py_ref& array) {
    return static_cast<double*>(PyArray_DATA(array.array()));
}

void fill_without_value(const py_ref& array) {
    std::fill_n(elements_of(array), PyArray_SIZE(array.array()), no_value);
}

std::int64_t samples_of(const strata::data_set& set) {
    const auto shape = set.shape(false);
    return shape.dimensions().empty() ? 0 : shape.dimensions().back();
}

} // namespace

py_ref samples_as_array(const strata::data_set& set) {
    const auto samples = samples_of(set);
    auto array = array_of({samples});
    if (!strata::read_strided(set, 0, 0, 0, static_cast<std::uint64_t>(samples), elements_of(array),
                              1))
        fill_without_value(array);
    return array;
}

py_ref vectors_as_array(const strata::data_set& set, std::uint64_t first) {
    const auto samples = samples_of(set);
    auto array = array_of({samples, axes});
    for (std::int64_t axis = 0; axis < axes; ++axis) {
        if (!strata::read_strided(set, 0, first + static_cast<std::uint64_t>(axis), 0,
                                  static_cast<std::uint64_t>(samples), elements_of(array) + axis,
                                  axes))
            fill_without_value(array);
    }
    return array;
}

py_ref vectors_without_value(std::uint64_t samples) {
    auto array = array_of({static_cast<std::int64_t>(samples), axes});
    fill_without_value(array);
    return array;
}

py_ref numbers_as_array(const double* numbers, std::int64_t rows, std::int64_t columns) {
    auto array = columns == 0 ? array_of({rows}) : array_of({rows, columns});
    if (numbers)
        std::copy_n(numbers, PyArray_SIZE(array.array()), elements_of(array));
    else
        fill_without_value(array);
    return array;
}

} // namespace mox
