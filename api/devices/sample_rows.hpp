#pragma once

#include "store/python.hpp"

#include <cstdint>

#include <strata/data_set.hpp>

namespace mox {

/// What the dictionaries of a platform take beside their arrays, in doubles; roughly.
inline constexpr double result_overhead = 256.0;

/// The samples of a set of one channel as an array of float64 that the caller owns: of shape
/// (samples,). A set that holds no numbers gives NaN.
[[nodiscard]] py_ref samples_as_array(const strata::data_set& set);

/// Three components of a set of one channel, from `first` on, as an array of the shape
/// (samples, 3).
[[nodiscard]] py_ref vectors_as_array(const strata::data_set& set, std::uint64_t first);

/// An array of the shape (samples, 3) without values.
[[nodiscard]] py_ref vectors_without_value(std::uint64_t samples);

/// Numbers as an array of float64 of shape (rows, columns), a vector when `columns` is 0; row by
/// row, NaN where there are no numbers.
[[nodiscard]] py_ref numbers_as_array(const double* numbers, std::int64_t rows,
                                      std::int64_t columns = 0);

} // namespace mox
