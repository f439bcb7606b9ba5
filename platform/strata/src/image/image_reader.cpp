#include "platform/strata/src/image/image_reader.hpp"

#include <array>
#include <cstring>
#include <string_view>
#include <utility>

#include <strata/store_error.hpp>

#include "platform/strata/src/elements/channel_rows.hpp"
#include "platform/strata/src/elements/number_types.hpp"
#include "platform/strata/src/image/image_format.hpp"
#include "platform/strata/src/tree/tree_path.hpp"

namespace strata::detail {

namespace {

[[noreturn]] void throw_damaged(const char* what) {
    throw store_error{std::string{"The image of the store is damaged: "} + what};
}

void require(bool holds, const char* what) {
    if (!holds)
        throw_damaged(what);
}

/// Sets hold numbers as they are, and real ones more compactly.
bool may_hold(data_type type, data_type stored) noexcept {
    return stored == type || (type == data_type::float64 &&
                              (stored == data_type::float32 || stored == data_type::int16));
}

} // namespace

std::span<const std::byte> image_reader::take(std::uint64_t count) {
    require(count <= rest_.size(), "it ends too early");
    const auto taken = rest_.first(static_cast<std::size_t>(count));
    rest_ = rest_.subspan(static_cast<std::size_t>(count));
    return taken;
}

template <typename Number> Number image_reader::get() {
    static_assert(std::is_arithmetic_v<Number>);
    Number number{};
    std::memcpy(&number, take(sizeof number).data(), sizeof number);
    return number;
}

std::uint64_t image_reader::get_count(std::uint64_t least) {
    const auto count = get<std::uint64_t>();
    require(count <= rest_.size() / least, "there are fewer nodes than it says");
    return count;
}

std::string image_reader::get_text() {
    const auto bytes = take(get<std::uint64_t>());
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::string image_reader::get_name() {
    auto name = get_text();
    require(is_component(name), "a name is none");
    return name;
}

void image_reader::read_tree(group_node& root) {
    read_group(root);
    require(rest_.empty(), "it goes on behind its end");
}

void image_reader::read_group(group_node& group) {
    require(group.depth() <= maximum_depth, "groups lie too deep");
    read_attributes(group.attributes());
    constexpr std::uint64_t least_bytes = 2 * sizeof(std::uint64_t);
    for (auto sets = get_count(least_bytes); sets > 0; --sets) {
        const auto name = get_name();
        require(!group.sets().find(name), "a name is there twice");
        group.sets().add(counted_ptr{new set_entry{name, read_content()}});
    }
    for (auto groups = get_count(least_bytes); groups > 0; --groups) {
        const auto name = get_name();
        require(!group.sets().find(name) && !group.groups().find(name), "a name is there twice");
        const counted_ptr child{new group_node{name, group.depth() + 1}};
        read_group(*child);
        group.groups().add(child);
    }
}

void image_reader::read_attributes(attribute_list& attributes) {
    constexpr std::uint64_t least_bytes = sizeof(std::uint64_t) + sizeof(std::int32_t);
    for (auto count = get_count(least_bytes); count > 0; --count) {
        const auto name = get_name();
        require(!attributes.find(name), "a name is there twice");
        attributes.add(read_attribute(name));
    }
}

counted_ptr<attribute_node> image_reader::read_attribute(const std::string& name) {
    const auto type = get_type();
    const auto form = get<std::uint8_t>();
    require(form <= 1, "an attribute has no form");
    if (form == 1)
        return counted_ptr{new attribute_node{name, read_array(element_kind(type)), type}};
    counted_ptr attribute{new attribute_node{name, data_shape{}, type}};
    read_single_value(*attribute, element_kind(type));
    return attribute;
}

void image_reader::read_single_value(attribute_node& attribute, data_type type) {
    if (type == data_type::string) {
        const auto text = get_text();
        const auto* pointer = text.c_str();
        static_cast<void>(attribute.write(static_cast<const void*>(&pointer), type));
    } else if (is_number(type)) {
        std::array<std::byte, sizeof(double)> number{};
        const auto bytes = take(element_size(type));
        std::memcpy(number.data(), bytes.data(), bytes.size());
        static_cast<void>(attribute.write(number.data(), type));
    }
}

counted_ptr<set_content> image_reader::read_content() {
    const auto number = get<std::uint64_t>();
    require(number <= contents_.size(), "a set is that of another name which is not there");
    if (number < contents_.size())
        return contents_[static_cast<std::size_t>(number)];
    const auto type = get_type();
    const counted_ptr content{new set_content{read_array(element_kind(type)), type}};
    contents_.push_back(content);
    read_attributes(content->attributes());
    return content;
}

element_layout image_reader::read_layout() {
    const auto rank = get<std::uint8_t>();
    require(rank <= maximum_rank, "an array has too many dimensions");
    std::array<std::uint64_t, maximum_rank> given{};
    for (std::size_t i = 0; i < rank; ++i)
        given[i] = get<std::uint64_t>();
    const dimensions extents{given.data(), rank}; // refuses what cannot be addressed
    const auto axis = get<std::uint8_t>();
    if (axis == no_axis)
        return element_layout{extents};
    require(axis + 1U < rank, "an array has no such axis");
    return element_layout::along(extents, axis);
}

element_array image_reader::read_array(data_type type) {
    const auto layout = read_layout();
    if (type == data_type::string)
        return read_texts(layout);
    std::vector<channel_buffer> rows;
    if (is_number(type)) {
        constexpr std::uint64_t least_bytes = sizeof(std::uint64_t) + 2 * sizeof(double);
        const auto count = get_count(least_bytes);
        require(count == layout.rows(), "an array has not the rows of its extents");
        rows.reserve(static_cast<std::size_t>(count));
        while (rows.size() < count)
            rows.push_back(read_row(type, layout.row_elements()));
    }
    return {type, layout, std::move(rows)};
}

element_array image_reader::read_texts(const element_layout& layout) {
    require(!layout.has_axis(), "texts have an axis");
    const auto count = get_count(sizeof(std::uint64_t));
    require(count <= layout.extents().count(), "an array has more texts than elements");
    std::vector<std::string> texts;
    texts.reserve(static_cast<std::size_t>(count));
    while (texts.size() < count)
        texts.push_back(get_text());
    return {layout, std::move(texts)};
}

channel_buffer image_reader::read_row(data_type type, std::uint64_t elements) {
    const auto number = get<std::uint64_t>();
    require(number <= buffers_.size(), "a row shares elements that are not there");
    if (number == buffers_.size())
        read_buffer();
    auto row = buffers_[static_cast<std::size_t>(number)];
    require(row.count() == elements, "a row has not the elements of its array");
    require(may_hold(type, row.stored()), "a row holds another type than its array");
    const auto offset = get<double>();
    const auto factor = get<double>();
    row.set_scaling(offset, factor);
    require(type == data_type::float64 || !is_scaled(row), "a row of whole numbers is scaled");
    return row;
}

void image_reader::read_buffer() {
    const auto stored = get_type();
    require(is_number(stored) && stored == element_kind(stored), "elements are no numbers");
    const auto size = element_size(stored);
    require(size != 0, "elements are no numbers");
    const auto count = get<std::uint64_t>();
    require(count <= rest_.size() / size, "it ends too early");
    auto buffer = make_rows(stored, count, 1, initial_content::whatever).front();
    const auto bytes = take(count * size);
    if (!bytes.empty())
        std::memcpy(buffer.data(), bytes.data(), bytes.size());
    buffers_.push_back(std::move(buffer));
}

} // namespace strata::detail
