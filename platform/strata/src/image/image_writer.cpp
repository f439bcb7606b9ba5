#include "platform/strata/src/image/image_writer.hpp"

#include <array>
#include <cstring>
#include <string>

#include "platform/strata/src/elements/number_types.hpp"
#include "platform/strata/src/image/image_format.hpp"

namespace strata::detail {

void image_writer::put_bytes(const void* bytes, std::size_t count) noexcept {
    if (!target_.empty() && count != 0)
        std::memcpy(target_.data() + size_, bytes, count);
    size_ += count;
}

void image_writer::put_text(std::string_view text) noexcept {
    put(std::uint64_t{text.size()});
    put_bytes(text.data(), text.size());
}

void image_writer::put_group(const group_node& group) {
    put_attributes(group.attributes());
    put(std::uint64_t{group.sets().count()});
    group.sets().for_each([&](const set_entry& entry) {
        put_text(entry.name());
        put_content(entry.content());
    });
    put(std::uint64_t{group.groups().count()});
    group.groups().for_each([&](const group_node& child) {
        put_text(child.name());
        put_group(child);
    });
}

void image_writer::put_content(const counted_ptr<set_content>& content) {
    const auto [found, is_new] = contents_.try_emplace(content.get(), contents_.size());
    put(found->second);
    if (!is_new)
        return;
    put_type(content->type());
    put_array(content->elements());
    put_attributes(content->attributes());
}

void image_writer::put_attributes(const attribute_list& attributes) {
    put(std::uint64_t{attributes.count()});
    attributes.for_each([&](const attribute_node& attribute) {
        put_text(attribute.name());
        put_attribute(attribute);
    });
}

void image_writer::put_attribute(const attribute_node& attribute) {
    put_type(attribute.type());
    const auto* elements = attribute.elements();
    put(static_cast<std::uint8_t>(elements ? 1 : 0));
    if (elements) {
        put_array(*elements);
    } else {
        put_single_value(attribute);
    }
}

void image_writer::put_single_value(const attribute_node& attribute) {
    const auto type = element_kind(attribute.type());
    if (type == data_type::string) {
        put_text(attribute.text());
    } else if (is_number(type)) {
        std::array<std::byte, sizeof(double)> number{};
        static_cast<void>(attribute.read(number.data(), type));
        put_bytes(number.data(), element_size(type));
    }
}

void image_writer::put_array(const element_array& array) {
    const auto& layout = array.layout();
    const auto& extents = layout.extents();
    put(static_cast<std::uint8_t>(extents.rank()));
    for (std::size_t i = 0; i < extents.rank(); ++i)
        put(extents[i]);
    put(layout.has_axis() ? static_cast<std::uint8_t>(layout.axis()) : no_axis);
    if (array.type() == data_type::string) {
        put(std::uint64_t{array.texts().size()});
        for (const auto& text : array.texts())
            put_text(text);
    } else if (is_number(array.type())) {
        put(std::uint64_t{array.rows().size()});
        for (const auto& row : array.rows())
            put_row(row);
    }
}

void image_writer::put_row(const channel_buffer& row) {
    const auto [found, is_new] =
        buffers_.try_emplace(std::pair{row.data(), row.count()}, buffers_.size());
    put(found->second);
    if (is_new) {
        put_type(row.stored());
        put(row.count());
        put_bytes(row.data(), row.count() * element_size(row.stored()));
    }
    put(row.offset());
    put(row.factor());
}

} // namespace strata::detail
