#pragma once

#include <cstddef>
#include <string_view>

#include <strata/export.hpp>

namespace strata {

/// Hash of a name that a file may have brought, by a key that every process draws anew: nobody can
/// make up names that all have the same.
[[nodiscard]] STRATA_EXPORT std::size_t name_hash(std::string_view name) noexcept;

} // namespace strata
