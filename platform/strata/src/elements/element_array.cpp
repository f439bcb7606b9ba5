#include "platform/strata/src/elements/element_array.hpp"

#include <algorithm>
#include <utility>

#include "platform/strata/src/elements/channel_rows.hpp"
#include "platform/strata/src/elements/convert_elements.hpp"
#include "platform/strata/src/elements/decode_row.hpp"
#include "platform/strata/src/elements/number_types.hpp"
#include "platform/strata/src/elements/run_walk.hpp"
#include "platform/strata/src/elements/text_copies.hpp"

namespace strata::detail {

element_array::element_array(data_type type, const element_layout& layout)
    : type_(element_kind(type)), layout_(layout) {
    if (is_number(type_)) {
        rows_ = make_rows(type_, layout_.row_elements(), layout_.rows(), initial_content::zero);
    } else if (type_ == data_type::string) {
        require_memory(extents().count(), sizeof(std::string));
    }
}

element_array::element_array(data_type type, const element_layout& layout,
                             std::vector<channel_buffer> rows) noexcept
    : type_(element_kind(type)), layout_(layout), rows_(std::move(rows)) {}

element_array::element_array(const element_layout& layout, std::vector<std::string> texts) noexcept
    : type_(data_type::string), layout_(layout), texts_(std::move(texts)) {}

bool element_array::read(const element_box& box, void* buffer, data_type requested) const {
    if (type_ == data_type::string && element_kind(requested) == data_type::string) {
        read_texts(box, buffer);
        return true;
    }
    if (!find_converter(type_, requested))
        return false;
    auto* to = static_cast<std::byte*>(buffer);
    const auto size = element_size(requested);
    run_walk walk{layout_, box};
    for (element_run run; walk.next(run); to += run.count * size) {
        decode_row(rows_[run.row], run.first, run.count, to, requested);
    }
    return true;
}

bool element_array::write(const element_box& box, const void* buffer, data_type given) {
    if (type_ == data_type::string && element_kind(given) == data_type::string) {
        write_texts(box, buffer);
        return true;
    }
    const auto convert = find_converter(given, type_);
    if (!convert)
        return false;
    if (box.count() == 0)
        return true;
    make_writable(box);
    const auto* from = static_cast<const std::byte*>(buffer);
    const auto size = element_size(type_);
    run_walk walk{layout_, box};
    for (element_run run; walk.next(run); from += run.count * element_size(given)) {
        convert(from, rows_[run.row].data() + run.first * size, run.count);
    }
    return true;
}

/// Gives the rows that `box` touches elements of their own, held as what they are.
void element_array::make_writable(const element_box& box) {
    const auto first = layout_.has_axis() ? box.offset[layout_.axis()] : 0;
    const auto count = layout_.has_axis() ? box.extent[layout_.axis()] : 1;
    std::vector<std::uint64_t> shared;
    for (auto i = first; i < first + count; ++i) {
        const auto& row = rows_[i];
        if (row.stored() != type_ || is_scaled(row) || !owned_alone(row))
            shared.push_back(i);
    }
    if (shared.empty())
        return;

    auto own = make_rows(type_, layout_.row_elements(), shared.size(), initial_content::whatever);
    const bool overwritten = box.count() == count * layout_.row_elements();
    for (std::size_t i = 0; i < shared.size(); ++i) {
        auto& row = rows_[shared[i]];
        if (!overwritten)
            decode_row(row, 0, row.count(), own[i].data(), type_);
        row = std::move(own[i]);
    }
    room_ = 0; // the rows are new, and no larger than they must be
}

void element_array::read_texts(const element_box& box, void* buffer) const {
    text_copies copies{box.count()};
    run_walk walk{layout_, box};
    for (element_run run; walk.next(run);) {
        for (auto i = run.first; i < run.first + run.count; ++i) {
            copies.add(i < texts_.size() ? std::string_view{texts_[i]} : std::string_view{});
        }
    }
    copies.hand_over(buffer);
}

void element_array::write_texts(const element_box& box, const void* buffer) {
    std::vector<std::string> given;
    given.reserve(box.count());
    for (std::size_t i = 0; i < box.count(); ++i)
        given.emplace_back(text_at(buffer, i));

    std::uint64_t end = 0;
    element_run run;
    for (run_walk walk{layout_, box}; walk.next(run);)
        end = std::max(end, run.first + run.count);
    if (end > texts_.size())
        texts_.resize(end);

    auto next = given.begin();
    for (run_walk walk{layout_, box}; walk.next(run);) {
        for (auto i = run.first; i < run.first + run.count; ++i)
            texts_[i] = std::move(*next++);
    }
}

} // namespace strata::detail
