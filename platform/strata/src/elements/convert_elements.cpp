#include "platform/strata/src/elements/convert_elements.hpp"

#include <array>
#include <utility>

#include <strata/access/convert_number.hpp>

#include "platform/strata/src/elements/element_access.hpp"
#include "platform/strata/src/elements/number_types.hpp"

namespace strata::detail {

namespace {

template <typename From, typename To>
void convert_elements(const std::byte* from, std::byte* to, std::size_t count) noexcept {
    if constexpr (std::is_same_v<From, To> && !std::is_same_v<From, bool>) {
        std::memcpy(to, from, count * sizeof(From));
    } else {
        for (std::size_t i = 0; i < count; ++i)
            save(to, i, convert_number<To>(load<From>(from, i)));
    }
}

template <typename From, std::size_t... To>
constexpr auto converters_from(std::index_sequence<To...>) {
    return std::array<element_converter, sizeof...(To)>{
        &convert_elements<From, std::tuple_element_t<To, number_types>>...};
}

template <std::size_t... From> constexpr auto all_converters(std::index_sequence<From...>) {
    return std::array{converters_from<std::tuple_element_t<From, number_types>>(
        std::make_index_sequence<number_kinds>{})...};
}

constexpr auto converters = all_converters(std::make_index_sequence<number_kinds>{});

} // namespace

element_converter find_converter(data_type from, data_type to) noexcept {
    const auto row = number_index(from);
    const auto column = number_index(to);
    if (row >= number_kinds || column >= number_kinds)
        return nullptr;
    return converters[row][column];
}

} // namespace strata::detail
