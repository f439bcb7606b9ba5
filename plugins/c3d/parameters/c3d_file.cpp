#include "plugins/c3d/parameters/c3d_file.hpp"

#include <algorithm>
#include <span>
#include <string_view>
#include <utility>

#include "plugins/c3d/bytes/import_error.hpp"
#include "schema/file_text.hpp"

namespace c3d {

namespace {

/// Second byte of the header: points and analog samples follow. No other content has a public
/// layout.
constexpr std::byte points_key{0x50};

/// As far as a header is looked for: some files begin with a run of zeros, all with something.
constexpr std::size_t most_zeros = 65536;

/// Read at first; most sections are smaller.
constexpr std::size_t usual_section = 64 * block_bytes;
/// 255 blocks are the format's limit; writers that go beyond stay far below this.
constexpr std::size_t largest_section = std::size_t{4} * 1024 * 1024;

/// A cut file is told from a text whose second letter is P (0x50) by its first byte, the parameter
/// block.
constexpr std::byte first_printable{0x20};

/// Texts have no other bytes below the printable ones. Of a header's words many are small numbers,
/// or 0.
bool is_of_text(std::byte byte) noexcept {
    constexpr std::string_view others = "\t\n\f\r";
    return byte >= first_printable ||
           others.find(static_cast<char>(byte)) != std::string_view::npos;
}

struct found_header {
    std::uint64_t origin;
    std::size_t bytes; ///< of the block that are there
    header_block block;
};

/// The header block at the beginning of the file, or behind zeros; the end of the file may cut it.
std::optional<found_header> find_header(const file_reader& reader) {
    std::uint64_t origin = 0;
    auto bytes = reader.read_up_to(0, block_bytes);
    if (!bytes.empty() && bytes.front() == std::byte{0}) {
        bytes = reader.read_up_to(0, most_zeros + 1);
        const auto first = std::find_if(bytes.begin(), bytes.end(),
                                        [](auto byte) { return byte != std::byte{0}; });
        origin = static_cast<std::uint64_t>(first - bytes.begin());
        bytes = reader.read_up_to(origin, block_bytes);
    }
    if (bytes.size() < 2 || bytes[0] == std::byte{0} || bytes[1] != points_key)
        return std::nullopt;
    found_header found{origin, bytes.size(), {}};
    std::copy(bytes.begin(), bytes.end(), found.block.begin());
    return found;
}

std::uint64_t parameter_block_of(const header_block& block) noexcept {
    return std::to_integer<std::uint64_t>(block[0]);
}

/// Sections are padded with zeros to whole blocks.
std::uint64_t zeros_at_end(const file_reader& reader) {
    const auto count = std::min<std::uint64_t>(reader.size(), block_bytes - 1);
    const auto bytes = reader.read_up_to(reader.size() - count, static_cast<std::size_t>(count));
    const auto last =
        std::find_if(bytes.rbegin(), bytes.rend(), [](auto byte) { return byte != std::byte{0}; });
    return static_cast<std::uint64_t>(last - bytes.rbegin());
}

/// For files whose processor byte is none: the format in which the header makes sense. Read in the
/// byte order of another one, a usual rate is next to nothing or beyond any camera.
std::optional<number_format> guess_format(const header_block& block) {
    for (auto format : {number_format::intel, number_format::dec, number_format::mips}) {
        const auto head = decode_header(format, block);
        const bool has_rate = head.rate >= 1.0F && head.rate <= 100000.0F;
        if (has_rate && head.data_start > parameter_block_of(block) &&
            head.first_frame <= head.last_frame) {
            return format;
        }
    }
    return std::nullopt;
}

std::optional<number_format> format_of(const header_block& block, std::byte processor) {
    const auto format = format_of_processor_byte(std::to_integer<std::uint8_t>(processor));
    return format ? format : guess_format(block);
}

/// What the walk over the parameter section gave, and the bytes that its records refer to.
struct walked_section {
    std::vector<std::byte> bytes;
    section_records records;
};

/// No length that the file gives for its section can be relied on: where the records go on behind
/// what was read, more is read.
walked_section walk_section(const file_reader& reader, section_place place, number_format format,
                            std::vector<std::byte> bytes, std::size_t announced,
                            schema::warnings& notes) {
    const auto rest = reader.size() - place.offset;
    const auto most = static_cast<std::size_t>(std::min<std::uint64_t>(rest, largest_section));
    auto wanted = std::min(std::max(bytes.size(), announced), most);
    while (true) {
        if (wanted > bytes.size())
            bytes = reader.read_up_to(place.offset, wanted);
        schema::warnings walk_notes;
        auto records = walk_records(bytes, place, format, walk_notes);
        if (!records.cut || bytes.size() >= most) {
            notes.add_all(walk_notes);
            return {std::move(bytes), std::move(records)};
        }
        wanted = std::min(2 * bytes.size(), most);
    }
}

/// Drops what a broken chain of records took from the data section. The section ends before the
/// data, whose place the header and POINT:DATA_START tell; either may be wrong, but not before a
/// record that was in order.
void cut_at_data(section_records& records, std::uint64_t origin, std::uint16_t header_start,
                 schema::warnings& notes) {
    std::uint64_t limit = 0;
    const auto consider = [&](std::uint64_t block) {
        const auto offset = block == 0 ? 0 : block_offset(origin, block);
        if (offset >= records.sound_end && (limit == 0 || offset < limit))
            limit = offset;
    };
    consider(header_start);
    for (const auto& item : records.parameters) {
        if (same_name(item.name, "DATA_START") && item.offset < records.sound_end) {
            consider(item.count(0).value_or(0));
        }
    }
    if (limit == 0)
        return;
    std::erase_if(records.groups, [&](const auto& group) { return group.offset >= limit; });
    std::erase_if(records.parameters, [&](auto& item) {
        if (item.offset >= limit)
            return true;
        if (item.data_offset + item.data.size() <= limit)
            return false;
        const auto before = item.data.size();
        const auto available = limit > item.data_offset ? limit - item.data_offset : 0;
        const auto kept = fit(item.dimensions, item.type, available);
        notes.add("byte {}: parameter '{}' has {} bytes of values, of which {} lie before the data "
                  "section; {}",
                  item.data_offset, schema::as_utf8(item.name), before, available,
                  kept ? "the entries that are complete are kept" : "it is left out");
        if (kept)
            item.data = item.data.first(*kept);
        item.description = {};
        return !kept.has_value();
    });
    records.end = std::min(records.end, limit);
}

void note_head(const c3d_file& file, std::uint64_t offset, schema::warnings& notes) {
    const auto processor = std::to_integer<std::uint8_t>(file.section_head[3]);
    if (processor != static_cast<std::uint8_t>(file.format)) {
        notes.add("byte {}: processor byte 84, 85 or 86 expected, found {}; read as {}", offset + 3,
                  processor, name_of(file.format));
    }
    if (file.origin != 0)
        notes.add("the header begins at byte {}, behind zeros", file.origin);
}

} // namespace

bool looks_like_c3d(const file_reader& reader) {
    const auto found = find_header(reader);
    if (!found)
        return false;
    if (std::all_of(found->block.begin(), found->block.end(), is_of_text))
        return false;
    const auto section = block_offset(found->origin, parameter_block_of(found->block));
    const auto head = reader.read_up_to(section, section_head_bytes);
    if (head.size() < section_head_bytes)
        return found->block[0] < first_printable;
    return format_of(found->block, head[3]).has_value();
}

c3d_file open_c3d(const file_reader& reader, schema::warnings& notes) {
    const auto found = find_header(reader);
    if (!found) {
        throw import_error(
            1, "key byte 0x50 of a C3D file with points and analog samples expected, not found");
    }
    if (found->bytes < block_bytes) {
        throw import_error(found->origin + found->bytes,
                           "a header of {} bytes expected, but the file ends here", block_bytes);
    }
    c3d_file file;
    file.size = reader.size();
    file.zeros_at_end = zeros_at_end(reader);
    file.origin = found->origin;
    file.block = found->block;
    const auto section_block = parameter_block_of(file.block);
    const auto offset = block_offset(file.origin, section_block);
    auto bytes = reader.read_up_to(offset, usual_section);
    if (bytes.size() < section_head_bytes) {
        throw import_error(
            file.origin,
            "the header says that the parameter section begins in block {} (byte {}), "
            "but the file has {} bytes",
            section_block, offset, file.size);
    }
    std::copy_n(bytes.begin(), section_head_bytes, file.section_head.begin());
    const auto format = format_of(file.block, file.section_head[3]);
    if (!format) {
        throw import_error(offset + 3,
                           "processor byte 84 (Intel), 85 (DEC) or 86 (MIPS) expected, found {}",
                           std::to_integer<int>(file.section_head[3]));
    }
    file.format = *format;
    file.head = decode_header(*format, file.block);
    note_head(file, offset, notes);

    const auto data_block = file.head.data_start;
    const bool data_follow = data_block > section_block;
    const auto blocks =
        std::max<std::uint64_t>(std::to_integer<std::uint64_t>(file.section_head[2]),
                                data_follow ? data_block - section_block : 0);
    const section_place place{offset, data_follow ? block_offset(file.origin, data_block) : 0};
    auto walked = walk_section(reader, place, *format, std::move(bytes),
                               static_cast<std::size_t>(blocks * block_bytes), notes);
    file.section = std::move(walked.bytes);
    if (walked.records.broken)
        cut_at_data(walked.records, file.origin, data_block, notes);
    file.parameters_end = walked.records.end;
    file.parameters = parameter_table(std::move(walked.records), notes);
    return file;
}

} // namespace c3d
