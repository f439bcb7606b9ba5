#include <strata/access/set_count.hpp>

#include "platform/strata/src/handles/access.hpp"

namespace strata {

std::size_t set_count(const data_group& group) noexcept {
    auto* node = detail::access::node(group);
    return node ? node->sets().count() : 0;
}

} // namespace strata
