#pragma once

#include <strata/data_store.hpp>
#include <strata/export.hpp>

namespace strata {

/// A store of its own with all that `store` holds: groups, sets and attributes in their order; a
/// set that has several names has them in the copy too. Numbers are shared until either store
/// writes to them, which never shows, not even when two threads use one of the stores each. Throws
/// std::bad_alloc.
[[nodiscard]] STRATA_EXPORT data_store copy_store(const data_store& store);

} // namespace strata
