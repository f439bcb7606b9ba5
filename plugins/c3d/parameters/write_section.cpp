#include "plugins/c3d/parameters/write_section.hpp"

#include <algorithm>
#include <string>
#include <string_view>

#include "plugins/c3d/bytes/export_error.hpp"
#include "plugins/c3d/bytes/format_limits.hpp"
#include "plugins/c3d/bytes/number_format.hpp"
#include "plugins/c3d/parameters/c3d_file.hpp"
#include "schema/file_text.hpp"

namespace c3d {

namespace {

constexpr std::size_t longest_distance = largest_word;
/// Some readers stop at the distance 0 of the last record, others at a name without length behind
/// it: both find what they look for.
constexpr std::size_t bytes_behind_last_record = 4;

/// Of a record, beside its name, extents, elements and description.
constexpr std::size_t group_bytes = 5;
constexpr std::size_t parameter_bytes = 7;

bool is_control(char character) {
    const auto octet = static_cast<unsigned char>(character);
    return octet < 0x20 || octet == 0x7F;
}

class section_writer {
  public:
    section_writer(section_mark mark, number_format numbers) : numbers_(numbers) {
        append_byte(bytes_, mark.first);
        append_byte(bytes_, mark.second);
        append_byte(bytes_, 0); // the number of blocks, known at the end
        append_byte(bytes_, static_cast<unsigned>(numbers));
    }

    void add(const written_group& group) {
        const auto owner = std::string("the group ") + group.name;
        begin(owner, group.name, 0x100U - group.id, group.locked);
        add_word(3 + description_of(owner, group).size());
        end(description_of(owner, group));
    }

    void add(const written_group& group, const written_parameter& item) {
        const auto owner = "the parameter " + group.name + ":" + item.name;
        begin(owner, item.name, group.id, item.locked);
        const auto& description = description_of(owner, item);
        const auto distance = item.extents.size() + item.data.size() + description.size() + 5;
        if (distance > longest_distance) {
            throw export_error("{} takes {} bytes; a C3D file holds {} bytes for one", owner,
                               distance, longest_distance);
        }
        add_word(distance);
        append_byte(bytes_, static_cast<unsigned>(item.type));
        append_byte(bytes_, static_cast<unsigned>(item.extents.size()));
        for (auto extent : item.extents)
            append_byte(bytes_, extent);
        add_elements(owner, item);
        end(description);
    }

    byte_list finish(std::size_t blocks) && {
        if (next_field_ != 0)
            write_word(numbers_, bytes_.data() + next_field_, 0);
        bytes_.resize(blocks * block_bytes);
        bytes_[2] = static_cast<std::byte>(blocks);
        return std::move(bytes_);
    }

  private:
    void begin(const std::string& owner, std::string_view name, unsigned id, bool locked) {
        if (schema::without_padding(name).empty() ||
            std::any_of(name.begin(), name.end(), is_control)) {
            throw export_error("{} has a name that no C3D file can hold: empty, or with control "
                               "characters",
                               owner);
        }
        if (name.size() > longest_name) {
            throw export_error("the name of {} has {} bytes; a C3D file holds {}", owner,
                               name.size(), longest_name);
        }
        const auto length = static_cast<unsigned>(name.size());
        append_byte(bytes_, locked ? 0x100U - length : length);
        append_byte(bytes_, id);
        append_text(bytes_, name);
        next_field_ = bytes_.size();
    }

    void end(std::string_view description) {
        append_byte(bytes_, static_cast<unsigned>(description.size()));
        append_text(bytes_, description);
    }

    template <typename Item>
    static const std::string& description_of(const std::string& owner, const Item& item) {
        if (item.description.size() > longest_description) {
            throw export_error("the description of {} has {} bytes; a C3D file holds {}", owner,
                               item.description.size(), longest_description);
        }
        return item.description;
    }

    void add_word(std::size_t value) {
        bytes_.resize(bytes_.size() + 2);
        write_word(numbers_, bytes_.data() + bytes_.size() - 2, static_cast<std::uint16_t>(value));
    }

    /// The elements of the tree are Intel numbers.
    void add_elements(const std::string& owner, const written_parameter& item) {
        const auto size = bytes_of(item.type);
        auto at = bytes_.size();
        bytes_.insert(bytes_.end(), item.data.begin(), item.data.end());
        if (numbers_ == number_format::intel || size == 1)
            return;
        for (; at < bytes_.size(); at += size) {
            if (item.type == element_type::real)
                convert_real(owner, bytes_.data() + at);
            else
                write_word(numbers_, bytes_.data() + at,
                           read_unsigned_word(number_format::intel, bytes_.data() + at));
        }
    }

    void convert_real(const std::string& owner, std::byte* at) const {
        const auto value = read_real(number_format::intel, at);
        if (!holds_real(numbers_, value)) {
            throw export_error("{} holds {}, too large for a C3D file of {} numbers", owner, value,
                               name_of(numbers_));
        }
        write_real(numbers_, at, value);
    }

    number_format numbers_;
    byte_list bytes_;
    std::size_t next_field_ = 0; // of the last record
};

/// Bytes of the longest text, without its padding.
std::size_t width_of_longest(const written_parameter& item, std::size_t width) {
    std::size_t longest = 1;
    for (std::size_t first = 0; first < item.data.size(); first += width) {
        auto length = std::min(width, item.data.size() - first);
        while (length > longest && item.data[first + length - 1] == std::byte{' '})
            --length;
        longest = std::max(longest, length);
    }
    return longest;
}

void narrow(written_parameter& item) {
    const std::size_t width = item.extents.front();
    const auto longest = width_of_longest(item, width);
    byte_list data;
    for (std::size_t first = 0; first < item.data.size(); first += width) {
        const auto text = item.data.begin() + static_cast<std::ptrdiff_t>(first);
        data.insert(data.end(), text, text + static_cast<std::ptrdiff_t>(longest));
    }
    item.data = std::move(data);
    item.extents.front() = static_cast<std::uint8_t>(longest);
}

} // namespace

std::size_t section_blocks(const parameter_tree& tree) noexcept {
    auto bytes = section_head_bytes + bytes_behind_last_record;
    for (const auto& group : tree.groups()) {
        bytes += group_bytes + group.name.size() + group.description.size();
        for (const auto& item : group.parameters) {
            bytes += parameter_bytes + item.name.size() + item.extents.size() + item.data.size() +
                     item.description.size();
        }
    }
    return static_cast<std::size_t>((bytes + block_bytes - 1) / block_bytes);
}

void narrow_texts(parameter_tree& tree) {
    for (auto& group : tree.groups()) {
        for (auto& item : group.parameters) {
            const bool is_text = item.type == element_type::character && !item.extents.empty();
            if (is_text && item.extents.front() > 1)
                narrow(item);
        }
    }
}

byte_list section_bytes(const parameter_tree& tree, section_mark mark, number_format numbers) {
    const auto blocks = section_blocks(tree);
    section_writer writer(mark, numbers);
    for (const auto& group : tree.groups()) {
        writer.add(group);
        for (const auto& item : group.parameters)
            writer.add(group, item);
    }
    if (blocks > most_section_blocks) {
        throw export_error("the parameters take {} blocks of {} bytes; a C3D file holds {}", blocks,
                           block_bytes, most_section_blocks);
    }
    return std::move(writer).finish(blocks);
}

} // namespace c3d
