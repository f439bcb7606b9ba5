#include "plugins/c3d/section_places.hpp"

#include "plugins/c3d/bytes/export_error.hpp"
#include "plugins/c3d/bytes/file_reader.hpp"
#include "plugins/c3d/bytes/format_limits.hpp"

namespace c3d {

namespace {

constexpr std::uint64_t largest_block_number = largest_word;

std::uint64_t blocks_of(std::uint64_t bytes) { return (bytes + block_bytes - 1) / block_bytes; }

} // namespace

section_places places_of(std::uint64_t parameter_blocks, std::uint64_t data_bytes,
                         std::uint64_t rotation_bytes, bool are_complete) {
    const auto first = 2 + parameter_blocks;
    if (rotation_bytes == 0)
        return {first, 0};
    const auto behind_data = first + blocks_of(data_bytes);
    if (behind_data <= largest_block_number)
        return {first, behind_data};
    const auto behind_rotations = first + blocks_of(rotation_bytes);
    if (behind_rotations > largest_block_number) {
        throw export_error("ROTATION:DATA_START would be block {}, or POINT:DATA_START block {}; a "
                           "C3D file holds {}",
                           behind_data, behind_rotations, largest_block_number);
    }
    if (!are_complete) {
        throw export_error("the rotations come before samples of {} bytes, and some of them are "
                           "missing; the number of frames, set anew, fills them up",
                           data_bytes);
    }
    return {behind_rotations, first};
}

} // namespace c3d
