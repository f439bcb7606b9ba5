// How bytes become numbers and texts, and the reverse.
//
// | file          |                                                    |
// |---------------|----------------------------------------------------|
// | number_format | words and reals of Intel, DEC and MIPS files       |
// | format_limits | the largest counts and texts of a file             |
// | vax_float     | the reals of DEC files                             |
// | element_bytes | words, reals and texts as an Intel file holds them |
// | file_reader   | a file in pieces, and its blocks                   |
// | file_writer   | a file from its first byte on                      |
// | import_error  | why a file cannot be read, and where               |
// | export_error  | why an acquisition cannot be written               |

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace c3d {

/// How a file holds its words and reals; the values are those of the processor byte.
enum class number_format : std::uint8_t {
    intel = 84, ///< little-endian words, IEEE reals
    dec = 85,   ///< little-endian words, VAX F_floating reals
    mips = 86,  ///< big-endian words, IEEE reals
};

/// How samples are held; one choice for a file's whole data section.
enum class sample_storage { integer, real };

/// Whether 16-bit analog samples have a sign.
enum class word_sign { with, without };

/// The format that a processor byte stands for. 1 to 3 are taken for 84 to 86: some writers leave
/// the 83 out.
[[nodiscard]] std::optional<number_format> format_of_processor_byte(std::uint8_t byte) noexcept;

/// "Intel", "DEC" or "MIPS".
[[nodiscard]] std::string_view name_of(number_format format) noexcept;

/// One 16-bit word at `bytes`, which holds at least two.
[[nodiscard]] std::uint16_t read_unsigned_word(number_format format,
                                               const std::byte* bytes) noexcept;
[[nodiscard]] std::int16_t read_signed_word(number_format format, const std::byte* bytes) noexcept;

/// One real at `bytes`, which holds at least four. Any bit pattern is allowed; the result may be
/// infinite or NaN.
[[nodiscard]] float read_real(number_format format, const std::byte* bytes) noexcept;

/// Puts one 16-bit word at `bytes`, which has room for it.
void write_word(number_format format, std::byte* bytes, std::uint16_t word) noexcept;

/// Puts one real at `bytes`, which has room for it. NaN of a DEC file, and what holds_real denies,
/// is the reserved operand.
void write_real(number_format format, std::byte* bytes, float value) noexcept;

/// False for an infinite number of a DEC file, and for one that is too large for it.
[[nodiscard]] bool holds_real(number_format format, float value) noexcept;

/// The word of the integer that is nearest to `value`, with or without a sign; of two, the even
/// one. Requires: that integer is from −32,768 to 65,535.
[[nodiscard]] std::uint16_t nearest_word(float value) noexcept;

} // namespace c3d
