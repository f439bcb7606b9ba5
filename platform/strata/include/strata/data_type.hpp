#pragma once

#include <cstddef>
#include <cstdint>

namespace strata {

/// Element type of an attribute or a data set. Values 101 to 112 denote the same kinds as 1 to 12;
/// 200, like 0, has none.
enum class data_type : std::int32_t {
    invalid = 0,
    boolean = 1, ///< one byte, zero is false
    int8 = 2,
    uint8 = 3,
    int16 = 4,
    uint16 = 5,
    int32 = 6,
    uint32 = 7,
    int64 = 8,
    uint64 = 9,
    float32 = 10, ///< IEEE single
    float64 = 11, ///< IEEE double
    string = 12,  ///< one UTF-8 text per element
};

/// `type` with values 101 to 112 taken to 1 to 12; every value without an element kind becomes
/// `invalid`.
[[nodiscard]] constexpr data_type element_kind(data_type type) noexcept {
    auto value = static_cast<std::int32_t>(type);
    if (value > 100)
        value -= 100;
    // NOLINTNEXTLINE(clang-analyzer-optin.core.EnumCastOutOfRange): 1 to 12 are all enumerators
    return value >= 1 && value <= 12 ? static_cast<data_type>(value) : data_type::invalid;
}

/// Bytes of one element; 0 for `string` and `invalid`.
[[nodiscard]] constexpr std::size_t element_size(data_type type) noexcept {
    switch (element_kind(type)) {
    case data_type::boolean:
    case data_type::int8:
    case data_type::uint8:
        return 1;
    case data_type::int16:
    case data_type::uint16:
        return 2;
    case data_type::int32:
    case data_type::uint32:
    case data_type::float32:
        return 4;
    case data_type::int64:
    case data_type::uint64:
    case data_type::float64:
        return 8;
    default:
        return 0;
    }
}

} // namespace strata
