#pragma once

#include <strata/data_set.hpp>
#include <strata/export.hpp>

namespace strata {

// A set that several steps change is changed as a draft first: whichever step fails, the set is as
// it was.

/// A copy of `set`, elements and attributes, that belongs to no group. Numbers are shared until
/// either is written to. Throws store_error for a handle that denotes nothing, std::bad_alloc.
[[nodiscard]] STRATA_EXPORT data_set draft_of(const data_set& set);

/// Gives `set` the elements and attributes of `draft`, and `draft` those of `set`. Names, links and
/// handles to the sets stay what they are; a handle to an attribute stays with the attribute.
/// Requires that both denote sets.
STRATA_EXPORT void exchange_content(const data_set& set, const data_set& draft) noexcept;

} // namespace strata
