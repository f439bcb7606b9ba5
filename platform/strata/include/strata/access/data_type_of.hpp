#pragma once

#include <cstdint>
#include <string>

#include <strata/data_type.hpp>

namespace strata {

/// The element type that holds a C++ number, truth value or text; `invalid` for any other type.
template <typename Native> inline constexpr data_type data_type_of = data_type::invalid;
template <> inline constexpr data_type data_type_of<bool> = data_type::boolean;
template <> inline constexpr data_type data_type_of<std::int8_t> = data_type::int8;
template <> inline constexpr data_type data_type_of<std::uint8_t> = data_type::uint8;
template <> inline constexpr data_type data_type_of<std::int16_t> = data_type::int16;
template <> inline constexpr data_type data_type_of<std::uint16_t> = data_type::uint16;
template <> inline constexpr data_type data_type_of<std::int32_t> = data_type::int32;
template <> inline constexpr data_type data_type_of<std::uint32_t> = data_type::uint32;
template <> inline constexpr data_type data_type_of<std::int64_t> = data_type::int64;
template <> inline constexpr data_type data_type_of<std::uint64_t> = data_type::uint64;
template <> inline constexpr data_type data_type_of<float> = data_type::float32;
template <> inline constexpr data_type data_type_of<double> = data_type::float64;
template <> inline constexpr data_type data_type_of<std::string> = data_type::string;

} // namespace strata
