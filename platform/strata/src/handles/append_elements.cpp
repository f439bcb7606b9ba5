#include <strata/access/append_elements.hpp>

#include "platform/strata/src/handles/access.hpp"

namespace strata {

namespace {

/// The elements behind a handle; null for a single value and for a handle that denotes nothing.
detail::element_array* elements_of(const data_set& set) noexcept {
    const auto* entry = detail::access::entry(set);
    return entry ? &entry->content()->elements() : nullptr;
}

detail::element_array* elements_of(const data_attribute& attribute) noexcept {
    auto* node = detail::access::node(attribute);
    return node ? node->elements() : nullptr;
}

void keep_first(detail::element_array* elements, std::uint64_t count) noexcept {
    if (elements && elements->extents().rank() == 1 && count <= elements->extents()[0])
        elements->keep_first(count);
}

} // namespace

bool append_elements(const data_set& set, const void* buffer, std::uint64_t count,
                     data_type given) {
    auto* elements = elements_of(set);
    return elements && elements->append(buffer, count, given);
}

bool append_elements(const data_attribute& attribute, const void* buffer, std::uint64_t count,
                     data_type given) {
    auto* elements = elements_of(attribute);
    return elements && elements->append(buffer, count, given);
}

void keep_first_elements(const data_set& set, std::uint64_t count) noexcept {
    keep_first(elements_of(set), count);
}

void keep_first_elements(const data_attribute& attribute, std::uint64_t count) noexcept {
    keep_first(elements_of(attribute), count);
}

} // namespace strata
