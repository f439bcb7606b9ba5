#include <strata/access/draft_set.hpp>

#include "platform/strata/src/handles/access.hpp"
#include "platform/strata/src/tree/store_failures.hpp"

namespace strata {

using detail::access;
using detail::counted_ptr;

data_set draft_of(const data_set& set) {
    const auto* entry = access::entry(set);
    if (!entry)
        detail::throw_denotes_nothing("data set");
    return access::handle(
        counted_ptr{new detail::set_entry{entry->name(), entry->content()->copy()}});
}

void exchange_content(const data_set& set, const data_set& draft) noexcept {
    access::entry(set)->content()->exchange(*access::entry(draft)->content());
}

} // namespace strata
