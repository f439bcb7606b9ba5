#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "plugins/c3d/bytes/number_format.hpp"

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

/// Copies the reserved bytes.
void copy_reserved(std::span<const std::byte, 512> from, std::span<std::byte, 512> to) noexcept;

/// The label of an event as the header holds it, in four bytes; none when it takes more.
[[nodiscard]] std::optional<std::string> stored_event_label(const std::string& label);

/// Places in the block, in bytes.
namespace header_place {

/// Words are numbered from 1.
constexpr std::size_t word(std::size_t number) noexcept { return 2 * (number - 1); }

inline constexpr std::size_t event_times = word(153);
inline constexpr std::size_t event_statuses = word(189);
inline constexpr std::size_t event_labels = word(199);
inline constexpr std::size_t event_label_bytes = 4; ///< of each label

} // namespace header_place

inline constexpr std::size_t most_header_events = 18;

/// Says in word 150 that event labels have four characters; files without it are old and have two.
inline constexpr std::uint16_t four_character_labels = 12345;

} // namespace c3d
