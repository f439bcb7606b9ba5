#include "plugins/c3d/parameters/read_metadata.hpp"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include <strata/data_shape.hpp>

#include "schema/file_text.hpp"
#include "schema/names.hpp"
#include "schema/write_attribute.hpp"

namespace c3d {

namespace {

/// Texts that any file may have, and how many bytes of a file allow another one: a width of 0 or 1
/// makes it cheap to announce millions of them.
constexpr std::uint64_t texts_always_allowed = 65536;
constexpr std::uint64_t bytes_for_another_text = 16;

/// The dimensions from `first` on, slowest varying first.
strata::data_shape shape_of(const parameter_dimensions& dimensions, std::size_t first) {
    std::vector<std::int64_t> extents;
    for (std::size_t i = dimensions.count(); i-- > first;)
        extents.push_back(dimensions[i]);
    return strata::data_shape(std::move(extents), false);
}

class metadata_writer {
  public:
    metadata_writer(std::uint64_t file_bytes, schema::warnings& notes)
        : texts_left_(texts_always_allowed + file_bytes / bytes_for_another_text), notes_(notes) {}

    void write(strata::data_group& group, const std::string& name, const parameter& item) {
        switch (item.type) {
        case element_type::character:
            return write_characters(group, name, item);
        case element_type::byte:
            return write_bytes(group, name, item);
        case element_type::integer:
            return write_elements<std::int16_t>(group, name, item, [&](const std::byte* at) {
                return read_signed_word(item.format, at);
            });
        case element_type::real:
            return write_elements<float>(
                group, name, item, [&](const std::byte* at) { return read_real(item.format, at); });
        }
    }

  private:
    void write_characters(strata::data_group& group, const std::string& name,
                          const parameter& item) {
        const auto count = item.text_count();
        if (count > texts_left_) {
            notes_.add("byte {}: parameter {}:{} announces {} texts, more than a file of this "
                       "length can have; it is left out",
                       item.offset, group.name(), name, count);
            return;
        }
        texts_left_ -= count;
        texts_.clear();
        for (std::uint64_t i = 0; i < count; ++i)
            texts_.push_back(schema::as_utf8(item.text(i)));
        schema::write_texts(group, name, shape_of(item.dimensions, 1),
                            std::span<const std::string>(texts_));
    }

    void write_bytes(strata::data_group& group, const std::string& name, const parameter& item) {
        if (item.element_count() != 1) {
            return write_elements<std::int8_t>(group, name, item, [](const std::byte* at) {
                return static_cast<std::int8_t>(*at);
            });
        }
        // Single bytes are counts, which have no sign.
        write_elements<std::int16_t>(group, name, item, [](const std::byte* at) {
            return std::to_integer<std::int16_t>(*at);
        });
    }

    template <typename Number, typename Read>
    void write_elements(strata::data_group& group, const std::string& name, const parameter& item,
                        Read read) {
        std::vector<Number> values(static_cast<std::size_t>(item.element_count()));
        const auto* at = item.data.data();
        for (auto& value : values) {
            value = read(at);
            at += bytes_of(item.type);
        }
        schema::write_numbers(group, name, shape_of(item.dimensions, 0),
                              std::span<const Number>(values));
    }

    std::uint64_t texts_left_;
    schema::warnings& notes_;
    std::vector<std::string> texts_;
};

} // namespace

void create_metadata(strata::data_group& format, const parameter_table& table,
                     const metadata_names& names, std::uint64_t file_bytes,
                     schema::warnings& notes) {
    auto metadata = format.create_group(schema::name::metadata);
    metadata_writer writer(file_bytes, notes);
    std::vector<strata::data_group> created(table.groups().size());
    for (std::size_t i = 0; i < created.size(); ++i) {
        const auto& group = table.groups()[i];
        const auto first = group.first_of_name;
        if (first == i)
            created[i] = metadata.create_group(names.groups[i]);
        for (auto index : group.parameters) {
            if (names.parameters[index].empty())
                continue;
            writer.write(created[first], names.parameters[index], table.parameters()[index]);
        }
    }
}

} // namespace c3d
