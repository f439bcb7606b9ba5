#pragma once

#include "store/python.hpp"

#include <cstdint>
#include <optional>

namespace mox {

/// A matrix given by a script: a list or tuple is turned into an array, anything else stays what it
/// is. May run Python code, so it comes before the acquisition is looked at.
[[nodiscard]] py_ref as_array(PyObject* value);

/// Rows of a matrix; nothing for what is no array of two dimensions.
[[nodiscard]] std::optional<std::uint64_t> row_count(const py_ref& array);

/// RuntimeError, with the first text that applies, unless `array` is an array and has two
/// dimensions, `frames` rows and `channels` × `components` columns.
void check_point_matrix(const py_ref& array, std::uint64_t frames, std::uint64_t channels,
                        std::uint64_t components);

/// The check, then as_matrix: what can be written to `channels` channels of `frames` samples.
[[nodiscard]] py_ref checked_matrix(const py_ref& array, std::uint64_t frames,
                                    std::uint64_t channels, std::uint64_t components);

} // namespace mox
