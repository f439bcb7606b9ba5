#pragma once

// Arrays that grow by one element.

#include <string>
#include <type_traits>

#include <strata/access/append_elements.hpp>
#include <strata/access/data_type_of.hpp>

namespace mox {

/// Adds `element` behind the last one of a set or an attribute with one dimension, in constant time
/// on average. False, with nothing changed, when it has not exactly one dimension or does not take
/// elements of this type.
template <typename Native, typename Target>
[[nodiscard]] bool append_element(const Target& target, const Native& element) {
    if constexpr (std::is_same_v<Native, std::string>) {
        const char* text = element.c_str();
        return strata::append_elements(target, &text, 1, strata::data_type_of<Native>);
    } else {
        return strata::append_elements(target, &element, 1, strata::data_type_of<Native>);
    }
}

} // namespace mox
