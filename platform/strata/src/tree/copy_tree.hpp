#pragma once

#include "platform/strata/src/tree/group_node.hpp"

namespace strata::detail {

/// Gives the empty group `to` copies of all that is below `from`, in its order. Rows of numbers are
/// shared until either is written to; a set that has several names has them in the copy too. Throws
/// std::bad_alloc.
void copy_tree(const group_node& from, group_node& to);

} // namespace strata::detail
