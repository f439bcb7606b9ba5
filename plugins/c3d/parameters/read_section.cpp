#include "plugins/c3d/parameters/read_section.hpp"

#include <algorithm>
#include <optional>
#include <string>

#include "plugins/c3d/parameters/parameter_record.hpp"
#include "schema/file_text.hpp"

namespace c3d {

namespace {

/// Far beyond any real file; bounds what a hostile one can make of a small section.
constexpr std::size_t most_records = 32768;

/// Where the walk goes on, and how far the content of the record may reach.
struct successor {
    std::optional<std::uint64_t> next;
    std::uint64_t limit;
};

class record_walker {
  public:
    record_walker(std::span<const std::byte> section, section_place place, number_format format,
                  schema::warnings& notes) noexcept
        : section_(section), offset_(place.offset), data_start_(place.data_start), format_(format),
          notes_(notes) {}

    section_records walk() &&;

  private:
    /// True for a record that is understood, or that at least leads to another one.
    [[nodiscard]] bool is_record(std::uint64_t at) const noexcept {
        const auto record = record_at(section_, at, format_);
        return record &&
               (record->makes_sense || record->target == 0 || is_end_mark(record->target) ||
                record_at(section_, record->target, format_));
    }
    /// Nothing but padding follows a name length of 0, and nothing but data where these begin.
    [[nodiscard]] bool is_end_mark(std::uint64_t at) const noexcept {
        return offset_ + at == data_start_ ||
               (at < section_.size() && section_[static_cast<std::size_t>(at)] == std::byte{0});
    }

    successor follow(const parameter_record& record);
    void keep(const parameter_record& record, std::uint64_t limit);
    void keep_parameter(const parameter_record& record, std::uint64_t limit);
    void keep_parameter_elements(const parameter_record& record, std::uint64_t limit,
                                 parameter item);
    void end_without_record(std::uint64_t at);

    std::span<const std::byte> section_;
    std::uint64_t offset_;
    std::uint64_t data_start_;
    number_format format_;
    schema::warnings& notes_;
    section_records result_;
    bool sound_ = true;
};

section_records record_walker::walk() && {
    std::optional<std::uint64_t> at = section_head_bytes;
    result_.end = result_.sound_end = offset_ + section_head_bytes;
    for (std::size_t count = 0; at && !is_end_mark(*at); ++count) {
        if (count == most_records) {
            notes_.add("byte {}: more than {} parameter records; the rest is left out",
                       offset_ + *at, most_records);
            break;
        }
        const auto record = record_at(section_, *at, format_);
        if (!record) {
            end_without_record(*at);
            break;
        }
        const auto [next, limit] = follow(*record);
        keep(*record, limit);
        const auto end = next ? *next : std::min<std::uint64_t>(limit, section_.size());
        result_.end = std::max(result_.end, offset_ + end);
        if (sound_)
            result_.sound_end = result_.end;
        at = next;
    }
    return std::move(result_);
}

void record_walker::end_without_record(std::uint64_t at) {
    // It may be the beginning of one; what is none stays none, however much more is read.
    result_.cut = true;
    if (at >= section_.size())
        return;
    result_.broken = true;
    notes_.add(
        "byte {}: a parameter record expected, found none; the parameters behind it are lost",
        offset_ + at);
}

successor record_walker::follow(const parameter_record& record) {
    const auto size = section_.size();
    if (record.target > size || (record.makes_sense && record.end > size))
        result_.cut = true;
    if (record.target == 0)
        return {std::nullopt, record.makes_sense ? record.end : size};
    if (record.makes_sense && record.target == record.end)
        return {record.target, record.end};

    const auto place = offset_ + record.at;
    if (is_record(record.target)) {
        // A record may be followed by a gap, but not reach into the next one.
        if (!record.makes_sense || record.target < record.end)
            sound_ = false;
        if (record.makes_sense && record.target < record.end) {
            notes_.add(
                "byte {}: record '{}' announces {} bytes more than there are to the next record",
                place, schema::as_utf8(record.name), record.end - record.target);
        }
        return {record.target, record.target};
    }
    sound_ = false;
    if (record.makes_sense && is_record(record.end)) {
        notes_.add(
            "byte {}: record '{}' says that the next record begins at byte {}, but it begins at {}",
            place, schema::as_utf8(record.name), offset_ + record.target, offset_ + record.end);
        return {record.end, record.end};
    }
    if (is_end_mark(record.target))
        return {record.target, record.target};
    result_.broken = true;
    notes_.add("byte {}: record '{}' leads to byte {}, where no record begins; the parameters "
               "behind it are lost",
               place, schema::as_utf8(record.name), offset_ + record.target);
    return {std::nullopt, record.makes_sense ? std::min(record.target, record.end) : record.target};
}

void record_walker::keep(const parameter_record& record, std::uint64_t limit) {
    if (record.id > 0) {
        keep_parameter(record, limit);
    } else if (record.id == 0 || record.id == -128) {
        notes_.add(
            "byte {}: record '{}' has the group id {}, which no group can have; it is left out",
            offset_ + record.at, schema::as_utf8(record.name), int{record.id});
    } else {
        result_.groups.push_back({offset_ + record.at, record.name,
                                  counted_text(section_, record.description, limit),
                                  static_cast<std::uint8_t>(-record.id), record.locked});
    }
}

void record_walker::keep_parameter(const parameter_record& record, std::uint64_t limit) {
    if (!record.makes_sense) {
        notes_.add("byte {}: parameter '{}' has no type of -1, 1, 2 or 4 with up to 7 dimensions; "
                   "it is left out",
                   offset_ + record.at, schema::as_utf8(record.name));
        return;
    }
    parameter item;
    item.offset = offset_ + record.at;
    item.name = record.name;
    item.group_id = static_cast<std::uint8_t>(record.id);
    item.locked = record.locked;
    item.type = record.type;
    item.format = format_;
    item.dimensions = record.dimensions;
    item.data_offset = offset_ + record.data;
    item.description = counted_text(section_, record.description, limit);
    keep_parameter_elements(record, limit, item);
}

void record_walker::keep_parameter_elements(const parameter_record& record, std::uint64_t limit,
                                            parameter item) {
    const auto end = std::min<std::uint64_t>(limit, section_.size());
    const auto available = end > record.data ? end - record.data : 0;
    const auto announced = record.description - record.data;
    const auto bytes = fit(item.dimensions, item.type, available);
    if (bytes != announced) {
        notes_.add("byte {}: parameter '{}' announces {} bytes of values, {} are there; {}",
                   item.data_offset, schema::as_utf8(record.name), announced, available,
                   bytes ? "the entries that are complete are kept" : "it is left out");
    }
    if (!bytes)
        return;
    item.data = *bytes == 0 ? std::span<const std::byte>{}
                            : section_.subspan(static_cast<std::size_t>(record.data), *bytes);
    result_.parameters.push_back(item);
}

} // namespace

section_records walk_records(std::span<const std::byte> section, section_place place,
                             number_format format, schema::warnings& notes) {
    return record_walker(section, place, format, notes).walk();
}

} // namespace c3d
