#pragma once

// Which C++ types Python can hold a handle on.

#include "store/python.hpp"

#include <anvil/json.hpp>
#include <strata/data_set.hpp>
#include <strata/data_store.hpp>

#include "module/handle_proxy.hpp"

namespace mox {

template <typename Wrapped> void destroy_wrapped(void* wrapped) {
    delete static_cast<Wrapped*>(wrapped);
}

template <typename Wrapped> extern const proxy_kind kind_of;
template <>
inline constexpr proxy_kind kind_of<strata::data_store>{"strata::data_store *",
                                                        destroy_wrapped<strata::data_store>};
template <>
inline constexpr proxy_kind kind_of<strata::data_set>{"strata::data_set *",
                                                      destroy_wrapped<strata::data_set>};
template <>
inline constexpr proxy_kind kind_of<anvil::json>{"anvil::json *", destroy_wrapped<anvil::json>};

/// A new proxy that owns a copy of `value`.
template <typename Wrapped> [[nodiscard]] py_ref wrap(Wrapped value) {
    return new_proxy(new Wrapped(std::move(value)), kind_of<Wrapped>);
}

} // namespace mox
