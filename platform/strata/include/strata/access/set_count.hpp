#pragma once

#include <cstddef>

#include <strata/data_group.hpp>
#include <strata/export.hpp>

namespace strata {

/// The number of data sets directly below `group`, without making a list of their names; 0 for a
/// handle that denotes nothing.
[[nodiscard]] STRATA_EXPORT std::size_t set_count(const data_group& group) noexcept;

} // namespace strata
