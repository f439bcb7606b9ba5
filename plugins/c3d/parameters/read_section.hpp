#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "plugins/c3d/bytes/number_format.hpp"
#include "plugins/c3d/parameters/parameter.hpp"
#include "schema/warnings.hpp"

namespace c3d {

/// A group record. It refers to the bytes of the section.
struct group_record {
    std::uint64_t offset = 0;     ///< in the file
    std::string_view name;        ///< as stored
    std::string_view description; ///< as stored
    std::uint8_t id = 0;          ///< 1 to 127; negative in the file
    bool locked = false;
};

/// The records of a parameter section, in file order.
struct section_records {
    std::vector<group_record> groups;
    std::vector<parameter> parameters;
    std::uint64_t end = 0;       ///< file offset behind the last record
    std::uint64_t sound_end = 0; ///< file offset up to which every record was as it should be
    bool broken = false;         ///< the chain of records leads to something that is none
    bool cut = false;            ///< the bytes given end inside the chain
};

/// Bytes before the first record: two without meaning, the number of blocks, the processor.
inline constexpr std::size_t section_head_bytes = 4;

/// Where a section lies in its file.
struct section_place {
    std::uint64_t offset = 0; ///< first byte of the section
    /// First byte of the data section by the header; 0 when not known.
    std::uint64_t data_start = 0;
};

/// Walks the records of `section`, which begins with its head. Follows the offsets of the records
/// and never the block count, which is often wrong. Never fails: what cannot be understood is left
/// out or ends the walk, and `notes` say so.
[[nodiscard]] section_records walk_records(std::span<const std::byte> section, section_place place,
                                           number_format format, schema::warnings& notes);

} // namespace c3d
