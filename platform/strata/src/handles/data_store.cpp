#include <strata/data_store.hpp>

#include "platform/strata/src/handles/access.hpp"

namespace strata {

data_store::data_store()
    : root_(detail::access::handle(detail::counted_ptr{new detail::group_node{"", 0}})) {}
data_store::data_store(const data_store&) noexcept = default;
data_store& data_store::operator=(const data_store&) noexcept = default;
data_store::data_store(data_store&&) noexcept = default;
data_store& data_store::operator=(data_store&&) noexcept = default;
data_store::~data_store() = default;

data_group data_store::root() const { return root_; }

} // namespace strata
