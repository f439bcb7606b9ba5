#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "platform/strata/src/elements/channel_rows.hpp"
#include "platform/strata/src/elements/convert_elements.hpp"
#include "platform/strata/src/elements/decode_row.hpp"
#include "platform/strata/src/elements/element_array.hpp"
#include "platform/strata/src/elements/number_types.hpp"
#include "platform/strata/src/elements/text_copies.hpp"

namespace strata::detail {

namespace {

/// What memory is taken for when `needed` elements have outgrown that of `former`: half as many
/// again keeps both the moves few and the unused part small.
std::uint64_t room_for(std::uint64_t needed, std::uint64_t former) noexcept {
    constexpr std::uint64_t least_room = 8;
    return std::max({needed, former + former / 2, least_room});
}

} // namespace

bool element_array::append(const void* buffer, std::uint64_t count, data_type given) {
    const bool both_texts = type_ == data_type::string && element_kind(given) == data_type::string;
    const auto convert = find_converter(given, type_);
    if (extents().rank() != 1 || (!both_texts && !convert))
        return false;
    if (count == 0)
        return true;

    const auto former = layout_.row_elements();
    const auto total = former + count;
    const element_layout grown{dimensions{&total, 1}};
    if (both_texts) {
        append_texts(buffer, count);
    } else {
        make_room(total);
        auto& row = rows_.front();
        convert(static_cast<const std::byte*>(buffer), row.data() + former * element_size(type_),
                count);
        set_count(row, total);
    }
    layout_ = grown;
    return true;
}

void element_array::append_texts(const void* buffer, std::uint64_t count) {
    std::vector<std::string> given;
    given.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        given.emplace_back(text_at(buffer, i));
    while (!given.empty() && given.back().empty())
        given.pop_back();
    if (given.empty())
        return;
    const auto former = layout_.row_elements();
    texts_.resize(former + given.size());
    std::ranges::move(given, texts_.begin() + static_cast<std::ptrdiff_t>(former));
}

/// Gives the one row elements of its own, held as what they are, and memory for `count` of them.
void element_array::make_room(std::uint64_t count) {
    auto& row = rows_.front();
    if (count <= room_ && owned_alone(row))
        return;
    const auto room = room_for(count, row.count());
    auto larger = make_rows(type_, room, 1, initial_content::whatever).front();
    decode_row(row, 0, row.count(), larger.data(), type_);
    set_count(larger, row.count());
    row = std::move(larger);
    room_ = room;
}

void element_array::keep_first(std::uint64_t count) noexcept {
    layout_ = element_layout{dimensions{&count, 1}};
    if (count < texts_.size())
        texts_.erase(texts_.begin() + static_cast<std::ptrdiff_t>(count), texts_.end());
    for (auto& row : rows_)
        set_count(row, count);
}

} // namespace strata::detail
