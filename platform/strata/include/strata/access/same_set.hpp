#pragma once

#include <strata/data_set.hpp>
#include <strata/export.hpp>

namespace strata {

/// True when both handles denote one set, be it under two names. A set that was deleted and made
/// again under its name is another one. Two handles that denote nothing are equal.
[[nodiscard]] STRATA_EXPORT bool same_set(const data_set& left, const data_set& right) noexcept;

} // namespace strata
