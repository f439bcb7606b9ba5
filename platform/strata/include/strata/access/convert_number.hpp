#pragma once

#include <limits>
#include <type_traits>
#include <utility>

namespace strata {

namespace detail {

/// Conversion of a real number to an integer type that cuts off the fraction, gives the nearest
/// limit to numbers beyond the type's range, and 0 to NaN.
template <typename Integer, typename Real> [[nodiscard]] Integer saturate(Real value) noexcept {
    using limits = std::numeric_limits<Integer>;
    // The power of two above the largest integer, which a real type represents exactly where it may
    // not represent the integer.
    constexpr auto half = static_cast<Integer>(limits::max() / 2 + 1);
    constexpr auto beyond = static_cast<Real>(half) * Real{2};
    if (value != value)
        return Integer{0};
    if (value >= beyond)
        return limits::max();
    if (value <= static_cast<Real>(limits::min()))
        return limits::min();
    return static_cast<Integer>(value);
}

} // namespace detail

/// `value` as another number type: a fraction is cut off for integers, what is beyond the range of
/// an integer type becomes its nearest limit, NaN becomes 0, and whatever is not zero is true.
template <typename To, typename From> [[nodiscard]] To convert_number(From value) noexcept {
    if constexpr (std::is_same_v<To, bool>) {
        return value != From{};
    } else if constexpr (std::is_same_v<From, bool> || !std::is_integral_v<To>) {
        return static_cast<To>(value);
    } else if constexpr (std::is_integral_v<From>) {
        if (std::in_range<To>(value))
            return static_cast<To>(value);
        return std::cmp_less(value, 0) ? std::numeric_limits<To>::min()
                                       : std::numeric_limits<To>::max();
    } else {
        return detail::saturate<To>(value);
    }
}

} // namespace strata
