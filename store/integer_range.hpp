#pragma once

// One rule for Python integers that are too large for where they go: Python OverflowError "Python
// int too large to convert to C long", and nothing is written.

#include "store/python.hpp"

#include <cstdint>

#include <strata/data_type.hpp>

namespace mox {

/// An int as the platform's C `long`, which has 32 bits wherever the module runs.
[[nodiscard]] std::int32_t c_long_of(PyObject* number);

/// An int as a signed 64-bit number.
[[nodiscard]] std::int64_t int64_of(PyObject* number);

/// Raises when `given` and `stored` are types of integers and one of the `count` elements, which
/// are of the type `given`, is beyond the range of `stored`. Real numbers and booleans on either
/// side have no range of their own: the store converts them.
void require_in_range(strata::data_type stored, const void* elements, std::uint64_t count,
                      strata::data_type given);

} // namespace mox
