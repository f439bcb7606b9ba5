#pragma once

// What the fields of a C3D file can hold at most.

#include <cstddef>
#include <cstdint>

namespace c3d {

inline constexpr std::size_t longest_name = 127; ///< bytes: the sign of its length locks the record
inline constexpr std::size_t longest_description = 255; ///< bytes
/// Extent of a dimension, which is a byte: the bytes of a text, the entries of a list.
inline constexpr std::size_t largest_extent = 255;
inline constexpr std::uint64_t largest_word = 65535; ///< 16 bits without a sign

} // namespace c3d
