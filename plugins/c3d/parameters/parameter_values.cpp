#include "plugins/c3d/parameters/parameter_values.hpp"

#include <algorithm>
#include <utility>

#include "plugins/c3d/bytes/export_error.hpp"
#include "plugins/c3d/bytes/format_limits.hpp"
#include "schema/file_text.hpp"

namespace c3d {

namespace {

std::size_t longest_of(const std::vector<std::string>& texts) {
    std::size_t longest = 0;
    for (const auto& text : texts)
        longest = std::max(longest, text.size());
    return longest;
}

/// The texts with those that are too long in one byte a character, where that gives them back.
std::vector<std::string> shortened(std::vector<std::string> stored,
                                   std::span<const std::string> texts, std::size_t width) {
    for (std::size_t i = 0; i < stored.size(); ++i) {
        if (stored[i].size() <= width)
            continue;
        if (auto shorter = schema::as_windows_1252(texts[i]))
            stored[i] = std::move(*shorter);
    }
    return stored;
}

std::vector<std::string> stored_texts(parameter_place place, std::span<const std::string> texts,
                                      text_width width) {
    std::vector<std::string> stored;
    stored.reserve(texts.size());
    for (const auto& text : texts)
        stored.push_back(schema::as_stored_within(text, largest_extent));
    if (longest_of(stored) > width.least && width.was_windows_1252) {
        auto as_read = shortened(stored, texts, width.least);
        if (longest_of(as_read) <= width.least)
            return as_read;
    }
    for (const auto& text : stored) {
        if (text.size() > largest_extent) {
            throw export_error("the parameter {}:{} has a text of {} bytes; a C3D file holds {}: "
                               "'{}'",
                               place.group, place.name, text.size(), largest_extent, text);
        }
    }
    return stored;
}

} // namespace

std::vector<std::uint8_t> stored_extents(parameter_place place,
                                         std::span<const std::int64_t> extents) {
    if (extents.size() > parameter_dimensions::most) {
        throw export_error("the parameter {}:{} has {} dimensions; a C3D file holds {}",
                           place.group, place.name, extents.size(), parameter_dimensions::most);
    }
    std::vector<std::uint8_t> stored;
    stored.reserve(extents.size());
    for (auto extent : extents) {
        if (extent < 0 || std::cmp_greater(extent, largest_extent)) {
            throw export_error("the parameter {}:{} has {} elements along a dimension; a C3D file "
                               "holds {}",
                               place.group, place.name, extent, largest_extent);
        }
        stored.push_back(static_cast<std::uint8_t>(extent));
    }
    return stored;
}

void set_texts(written_parameter& item, parameter_place place, std::span<const std::string> texts,
               std::span<const std::int64_t> extents, text_width wanted) {
    const auto stored = stored_texts(place, texts, wanted);
    const auto width = std::max(wanted.least, longest_of(stored));
    std::vector<std::int64_t> all{static_cast<std::int64_t>(width)};
    all.insert(all.end(), extents.begin(), extents.end());
    item.extents = stored_extents(place, all);
    item.type = element_type::character;
    item.data.clear();
    item.data.reserve(width * stored.size());
    for (const auto& text : stored) {
        append_text(item.data, text);
        item.data.resize(item.data.size() + width - text.size(), std::byte{' '});
    }
}

void set_bytes(written_parameter& item, std::span<const std::int64_t> values,
               std::vector<std::uint8_t> extents) {
    item.type = element_type::byte;
    item.extents = std::move(extents);
    item.data.clear();
    for (auto value : values)
        append_byte(item.data, static_cast<unsigned>(value));
}

void set_words(written_parameter& item, std::span<const std::int64_t> values,
               std::vector<std::uint8_t> extents) {
    item.type = element_type::integer;
    item.extents = std::move(extents);
    item.data.clear();
    for (auto value : values)
        append_word(item.data, static_cast<unsigned>(value));
}

void set_reals(written_parameter& item, std::span<const float> values,
               std::vector<std::uint8_t> extents) {
    item.type = element_type::real;
    item.extents = std::move(extents);
    item.data.clear();
    for (auto value : values)
        append_real(item.data, value);
}

} // namespace c3d
