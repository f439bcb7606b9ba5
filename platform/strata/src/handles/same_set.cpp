#include <strata/access/same_set.hpp>

#include "platform/strata/src/handles/access.hpp"

namespace strata {

bool same_set(const data_set& left, const data_set& right) noexcept {
    if (!left || !right)
        return !left && !right;
    return detail::access::entry(left)->content().get() ==
           detail::access::entry(right)->content().get();
}

} // namespace strata
