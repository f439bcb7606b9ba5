#pragma once

#include <cstdint>

#include <strata/data_attribute.hpp>
#include <strata/data_set.hpp>
#include <strata/data_type.hpp>
#include <strata/export.hpp>

namespace strata {

/// Adds `count` elements of `buffer`, given as write_value takes them, behind the last one of a set
/// or an attribute with one dimension. However many there are, elements that are appended one by
/// one take the same time each, on average; for that, their memory may have room for up to twice as
/// many. Who shares the elements keeps them as they were.
///
/// False when there is not exactly one dimension, when there is no conversion, and for a handle
/// that denotes nothing; nothing has changed then. Throws store_error for more elements than can
/// be addressed, std::bad_alloc; nothing has changed then either.
[[nodiscard]] STRATA_EXPORT bool append_elements(const data_set& set, const void* buffer,
                                                 std::uint64_t count, data_type given);
[[nodiscard]] STRATA_EXPORT bool append_elements(const data_attribute& attribute,
                                                 const void* buffer, std::uint64_t count,
                                                 data_type given);

/// Takes back what was appended: the first `count` elements stay. Leaves alone what has not exactly
/// one dimension, or fewer elements.
STRATA_EXPORT void keep_first_elements(const data_set& set, std::uint64_t count) noexcept;
STRATA_EXPORT void keep_first_elements(const data_attribute& attribute,
                                       std::uint64_t count) noexcept;

} // namespace strata
