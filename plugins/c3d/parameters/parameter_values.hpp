#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "plugins/c3d/parameters/parameter_tree.hpp"

namespace c3d {

/// Names a parameter in messages.
struct parameter_place {
    std::string_view group;
    std::string_view name;
};

/// Extents as a file holds them. Throws export_error when there are more than seven, and when one
/// is larger than 255.
[[nodiscard]] std::vector<std::uint8_t> stored_extents(parameter_place place,
                                                       std::span<const std::int64_t> extents);

/// How wide texts are at least.
struct text_width {
    std::size_t least = 1;
    /// The texts were Windows-1252 of this width. As UTF-8 they may have become longer than they
    /// were; if they fit as they were, they are written so.
    bool was_windows_1252 = false;
};

/// Makes `item` hold texts, `extents` of them, padded with blanks to the longest one. Throws
/// export_error when a text is longer than 255 bytes.
void set_texts(written_parameter& item, parameter_place place, std::span<const std::string> texts,
               std::span<const std::int64_t> extents, text_width width);

// As many numbers as the extents say.
void set_bytes(written_parameter& item, std::span<const std::int64_t> values,
               std::vector<std::uint8_t> extents);
void set_words(written_parameter& item, std::span<const std::int64_t> values,
               std::vector<std::uint8_t> extents);
void set_reals(written_parameter& item, std::span<const float> values,
               std::vector<std::uint8_t> extents);

} // namespace c3d
