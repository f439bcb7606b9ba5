#pragma once

#include <strata/data_shape.hpp>
#include <strata/export.hpp>

namespace strata {

/// Frees the texts that a `read_value` of type `string` placed in `buffer`, one per element of
/// `shape`. Called exactly once after every successful read of texts.
STRATA_EXPORT void data_converter_string_clean_buffer(const data_shape& shape,
                                                      void* buffer) noexcept;

} // namespace strata
