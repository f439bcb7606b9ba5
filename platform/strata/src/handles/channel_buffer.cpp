#include <strata/plugin/channel_buffer.hpp>

#include <string>
#include <utility>

#include <strata/store_error.hpp>

#include "platform/strata/src/elements/channel_rows.hpp"
#include "platform/strata/src/elements/decode_row.hpp"
#include "platform/strata/src/elements/number_types.hpp"
#include "platform/strata/src/elements/run_walk.hpp"
#include "platform/strata/src/handles/access.hpp"
#include "platform/strata/src/tree/store_failures.hpp"

namespace strata {

using detail::access;

namespace {

[[noreturn]] void throw_no_numbers() { throw store_error{"A channel buffer holds numbers"}; }

[[noreturn]] void throw_wrong_count(std::size_t index, std::uint64_t expected,
                                    std::uint64_t found) {
    throw store_error{"Channel buffer " + std::to_string(index) + " has " + std::to_string(found) +
                      " elements, not " + std::to_string(expected)};
}

[[noreturn]] void throw_rows_differ() {
    throw store_error{"The rows of an attribute are one row at least, of one type, and not scaled"};
}

[[noreturn]] void throw_no_such_row(std::uint64_t index) {
    throw store_error{"There is no channel or row " + std::to_string(index)};
}

void require_counts(const std::vector<channel_buffer>& rows, std::uint64_t expected) {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (!detail::is_number(rows[i].stored()) || !rows[i].data())
            throw_no_numbers();
        if (rows[i].count() != expected)
            throw_wrong_count(i, expected, rows[i].count());
    }
}

/// Row `index` along dimension `axis`; shared where the elements lie in such rows, else a copy.
channel_buffer row_along(const detail::element_array& array, std::size_t axis,
                         std::uint64_t index) {
    if (!detail::is_number(array.type()))
        throw_no_numbers();
    const auto& layout = array.layout();
    if (index >= array.extents()[axis])
        throw_no_such_row(index);
    if (layout.has_axis() && layout.axis() == axis)
        return array.rows()[index];

    auto box = array.extents().whole();
    box.offset[axis] = index;
    box.extent[axis] = 1;
    auto copy = channel_buffer::allocate(array.type(), box.count(), 1).front();
    static_cast<void>(array.read(box, copy.data(), array.type()));
    return copy;
}

data_shape shape(std::initializer_list<std::uint64_t> extents) {
    return detail::dimensions{extents.begin(), extents.size()}.shape();
}

data_attribute create_row_attribute(data_set& set, std::string_view name,
                                    const detail::element_layout& layout,
                                    std::vector<channel_buffer> rows) {
    auto* entry = access::entry(set);
    if (!entry)
        detail::throw_denotes_nothing("data set");
    const auto type = rows.front().stored();
    detail::element_array elements{type, layout, std::move(rows)};
    return access::handle(entry->content()->attributes().create(name, std::move(elements)));
}

void require_plain_rows(const std::vector<channel_buffer>& rows) {
    if (rows.empty())
        throw_rows_differ();
    require_counts(rows, rows.front().count());
    for (const auto& row : rows) {
        if (row.stored() != rows.front().stored() || detail::is_scaled(row))
            throw_rows_differ();
    }
}

} // namespace

std::vector<channel_buffer> channel_buffer::allocate(data_type stored, std::uint64_t elements,
                                                     std::size_t channels) {
    if (!detail::is_number(stored))
        throw_no_numbers();
    return detail::make_rows(element_kind(stored), elements, channels,
                             detail::initial_content::whatever);
}

void channel_buffer::set_scaling(double offset, double factor) noexcept {
    offset_ = offset;
    factor_ = factor;
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): handles that are written through are values
data_set create_channel_set(data_group group, std::string_view name, std::uint64_t components,
                            std::uint64_t samples, std::vector<channel_buffer> channels) {
    auto* node = access::node(group);
    if (!node)
        detail::throw_denotes_nothing("group");
    detail::require_free_set_path(*node, name);
    const detail::dimensions extents{shape({components, channels.size(), samples})};
    require_counts(channels, components * samples);

    const auto layout = detail::element_layout::along(extents, 1);
    detail::element_array elements{data_type::float64, layout, std::move(channels)};
    detail::counted_ptr content{new detail::set_content{std::move(elements)}};
    return access::handle(detail::add_set_at(*node, name, std::move(content)));
}

channel_buffer share_channel(const data_set& set, std::uint64_t channel) {
    const auto* entry = access::entry(set);
    if (!entry)
        detail::throw_denotes_nothing("data set");
    const auto& elements = entry->content()->elements();
    if (elements.extents().rank() != 3)
        throw_no_such_row(channel);
    return row_along(elements, 1, channel);
}

data_attribute create_row_attribute(data_set set, std::string_view name,
                                    std::vector<channel_buffer> rows) {
    require_plain_rows(rows);
    const detail::dimensions extents{shape({rows.size(), rows.front().count()})};
    return create_row_attribute(set, name, detail::element_layout::along(extents, 0),
                                std::move(rows));
}

data_attribute create_row_attribute(data_set set, std::string_view name, channel_buffer row) {
    std::vector<channel_buffer> rows{std::move(row)};
    require_plain_rows(rows);
    const detail::dimensions extents{shape({rows.front().count()})};
    return create_row_attribute(set, name, detail::element_layout{extents}, std::move(rows));
}

channel_buffer share_elements(const data_attribute& attribute) {
    const auto* node = access::node(attribute);
    if (!node)
        detail::throw_denotes_nothing("attribute");
    if (!node->elements() || node->elements()->extents().rank() != 1)
        throw_no_such_row(0);
    if (!detail::is_number(node->elements()->type()))
        throw_no_numbers();
    return node->elements()->rows().front();
}

channel_buffer share_row(const data_attribute& attribute, std::uint64_t row) {
    const auto* node = access::node(attribute);
    if (!node)
        detail::throw_denotes_nothing("attribute");
    if (!node->elements() || node->elements()->extents().rank() != 2)
        throw_no_such_row(row);
    return row_along(*node->elements(), 0, row);
}

} // namespace strata
