#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "plugins/c3d/decode/number_format.hpp"

namespace c3d {

/// An event of the header block.
struct header_event {
    float time;          ///< seconds
    std::uint8_t status; ///< on or off; writers do not agree which is which
    std::string label;   ///< up to four characters, without padding
};

/// The header block as the file has it; nothing is checked against anything.
struct header {
    std::uint16_t points = 0;            ///< word 2
    std::uint16_t analog_values = 0;     ///< word 3: all channels × samples of one frame
    std::uint16_t first_frame = 0;       ///< word 4
    std::uint16_t last_frame = 0;        ///< word 5
    std::uint16_t interpolation_gap = 0; ///< word 6
    float scale = 0.0F;                  ///< words 7 and 8
    std::uint16_t data_start = 0;        ///< word 9: a block
    std::uint16_t samples_per_frame = 0; ///< word 10: analog samples of one channel in one frame
    float rate = 0.0F;                   ///< words 11 and 12, Hz
    std::vector<header_event> events;    ///< at most 18
};

using header_block = std::array<std::byte, 512>;

[[nodiscard]] header decode_header(number_format format, std::span<const std::byte, 512> block);

/// True when a byte that the format reserves is not zero; whoever writes the file again has to keep
/// it.
[[nodiscard]] bool has_reserved_content(std::span<const std::byte, 512> block) noexcept;

} // namespace c3d
