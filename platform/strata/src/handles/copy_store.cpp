#include <strata/access/copy_store.hpp>

#include "platform/strata/src/handles/access.hpp"
#include "platform/strata/src/tree/copy_tree.hpp"

namespace strata {

data_store copy_store(const data_store& store) {
    data_store made;
    detail::copy_tree(*detail::access::node(store.root()), *detail::access::node(made.root()));
    return made;
}

} // namespace strata
