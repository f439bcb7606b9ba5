#pragma once

#include <cstdint>

#include <strata/data_type.hpp>

namespace schema {

/// The store's element type for a C++ number.
template <typename Number>
inline constexpr strata::data_type data_type_of = strata::data_type::invalid;
template <> inline constexpr strata::data_type data_type_of<std::int8_t> = strata::data_type::int8;
template <>
inline constexpr strata::data_type data_type_of<std::uint8_t> = strata::data_type::uint8;
template <>
inline constexpr strata::data_type data_type_of<std::int16_t> = strata::data_type::int16;
template <>
inline constexpr strata::data_type data_type_of<std::uint16_t> = strata::data_type::uint16;
template <>
inline constexpr strata::data_type data_type_of<std::int32_t> = strata::data_type::int32;
template <>
inline constexpr strata::data_type data_type_of<std::int64_t> = strata::data_type::int64;
template <>
inline constexpr strata::data_type data_type_of<std::uint64_t> = strata::data_type::uint64;
template <> inline constexpr strata::data_type data_type_of<float> = strata::data_type::float32;
template <> inline constexpr strata::data_type data_type_of<double> = strata::data_type::float64;

} // namespace schema
