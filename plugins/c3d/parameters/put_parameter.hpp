#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "plugins/c3d/parameters/parameter_tree.hpp"

namespace c3d {

/// Whether a parameter is locked that the file did not have before; others keep their lock.
enum class new_lock { off, on };

// A parameter that a reader would already take for the given value stays as it is, with its type
// and extents; else it gets the value, in its own type where that can hold it.

void put_count(written_group& group, std::string_view name, std::uint64_t value,
               new_lock lock = new_lock::off);
void put_real(written_group& group, std::string_view name, float value,
              new_lock lock = new_lock::off);
/// The number of a block, locked: always a word, so that the parameter's length is known before the
/// number is.
void put_block(written_group& group, std::string_view name, std::uint64_t block);
/// One text, without a dimension for entries unless it had one. A list that went on ends.
void put_text(written_group& group, std::string_view name, const std::string& value,
              std::size_t least_width, new_lock lock = new_lock::off);

// Lists, an entry for each channel or event. What goes beyond 255 entries becomes NAME2, NAME3 and
// so on; continuations that are no longer needed are removed. Texts are at least as wide as they
// were.

void put_texts(written_group& group, std::string_view name, std::span<const std::string> texts,
               std::size_t least_width);
void put_words(written_group& group, std::string_view name, std::span<const std::int64_t> values);
void put_reals(written_group& group, std::string_view name, std::span<const float> values);
/// Bytes where the list has held bytes and all values are from 0 to 127, else words.
void put_small_numbers(written_group& group, std::string_view name,
                       std::span<const std::int64_t> values);
/// Two reals an entry.
void put_pairs(written_group& group, std::string_view name, std::span<const float> values);

/// Removes a list with its continuations.
void remove_list(written_group& group, std::string_view name);

} // namespace c3d
