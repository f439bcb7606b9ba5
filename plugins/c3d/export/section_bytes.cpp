#include "plugins/c3d/export/section_bytes.hpp"

#include <algorithm>
#include <string>
#include <string_view>

#include "plugins/c3d/decode/number_format.hpp"
#include "plugins/c3d/decode/text.hpp"
#include "plugins/c3d/export/export_error.hpp"
#include "plugins/c3d/file/c3d_file.hpp"

namespace c3d {

namespace {

constexpr std::size_t longest_name = 127;
constexpr std::size_t longest_description = 255;
constexpr std::size_t longest_distance = 65535;
constexpr std::size_t most_blocks = 255;
constexpr std::size_t bytes_behind_last_record = 4;

bool is_control(char character) {
    const auto octet = static_cast<unsigned char>(character);
    return octet < 0x20 || octet == 0x7F;
}

class section_writer {
  public:
    explicit section_writer(section_mark mark) {
        append_byte(bytes_, mark.first);
        append_byte(bytes_, mark.second);
        append_byte(bytes_, 0); // the number of blocks, known at the end
        append_byte(bytes_, static_cast<unsigned>(number_format::intel));
    }

    void add(const written_group& group) {
        const auto owner = std::string("the group ") + group.name;
        begin(owner, group.name, 0x100U - group.id, group.locked);
        append_word(bytes_, static_cast<unsigned>(3 + description_of(owner, group).size()));
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
        append_word(bytes_, static_cast<unsigned>(distance));
        append_byte(bytes_, static_cast<unsigned>(item.type));
        append_byte(bytes_, static_cast<unsigned>(item.extents.size()));
        for (auto extent : item.extents)
            append_byte(bytes_, extent);
        bytes_.insert(bytes_.end(), item.data.begin(), item.data.end());
        end(description);
    }

    byte_list finish() && {
        if (next_field_ != 0)
            put_word(bytes_.data() + next_field_, 0);
        const auto blocks =
            (bytes_.size() + bytes_behind_last_record + block_bytes - 1) / block_bytes;
        if (blocks > most_blocks) {
            throw export_error("the parameters take {} blocks of {} bytes; a C3D file holds {}",
                               blocks, block_bytes, most_blocks);
        }
        bytes_.resize(blocks * block_bytes);
        bytes_[2] = static_cast<std::byte>(blocks);
        return std::move(bytes_);
    }

  private:
    void begin(const std::string& owner, std::string_view name, unsigned id, bool locked) {
        if (without_padding(name).empty() || std::any_of(name.begin(), name.end(), is_control)) {
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

    byte_list bytes_;
    std::size_t next_field_ = 0; // of the last record
};

} // namespace

byte_list section_bytes(const parameter_tree& tree, section_mark mark) {
    section_writer writer(mark);
    for (const auto& group : tree.groups()) {
        writer.add(group);
        for (const auto& item : group.parameters)
            writer.add(group, item);
    }
    return std::move(writer).finish();
}

} // namespace c3d
