#pragma once

#include <cstddef>

#include "plugins/c3d/bytes/element_bytes.hpp"
#include "plugins/c3d/bytes/number_format.hpp"
#include "plugins/c3d/parameters/parameter_tree.hpp"

namespace c3d {

/// The two bytes at the beginning of a parameter section, which mean nothing.
struct section_mark {
    unsigned first = 1;
    unsigned second = 80;
};

inline constexpr std::size_t most_section_blocks = 255;

/// Blocks that the section takes, however many.
[[nodiscard]] std::size_t section_blocks(const parameter_tree& tree) noexcept;

/// Where a section of more than 255 blocks would be too long: makes texts no wider than the longest
/// one of their parameter. No text is changed.
void narrow_texts(parameter_tree& tree);

/// The parameter section of a file with such numbers: each group and behind it its parameters,
/// padded to whole blocks. The last record says so, and at least four zero bytes follow it.
///
/// Throws export_error when a name, a description or a parameter is too long for the format, when
/// all together take more than 255 blocks, or when the numbers do not reach as far as a real.
[[nodiscard]] byte_list section_bytes(const parameter_tree& tree, section_mark mark,
                                      number_format numbers = number_format::intel);

} // namespace c3d
