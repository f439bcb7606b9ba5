#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "plugins/c3d/bytes/number_format.hpp"
#include "plugins/c3d/parameters/parameter.hpp"

namespace c3d {

/// One record of a parameter section as it describes itself. Positions are bytes of the section;
/// those that follow from announced extents may lie far behind its end.
struct parameter_record {
    std::size_t at = 0;
    std::string_view name;
    std::int8_t id = 0; ///< negative: a group
    bool locked = false;
    std::uint64_t target = 0; ///< where the next record should be; 0 in the last record

    // Known for groups, and for parameters that make sense.
    bool makes_sense = true;
    element_type type = element_type::byte;
    parameter_dimensions dimensions;
    std::uint64_t data = 0;        ///< first element
    std::uint64_t description = 0; ///< length byte of the description
    std::uint64_t end = 0;         ///< behind the description
};

/// The record at `at` of `section`; nothing where there is none: a name length of 0 or beyond the
/// end, a name with control characters.
[[nodiscard]] std::optional<parameter_record>
record_at(std::span<const std::byte> section, std::uint64_t at, number_format format) noexcept;

/// The text behind the length byte at `position`, as far as it lies before `limit` and in the
/// section.
[[nodiscard]] std::string_view counted_text(std::span<const std::byte> section,
                                            std::uint64_t position, std::uint64_t limit) noexcept;

} // namespace c3d
