#include "plugins/c3d/parameters/parameter_record.hpp"

#include <algorithm>

namespace c3d {

namespace {

class section_bytes {
  public:
    explicit section_bytes(std::span<const std::byte> bytes) noexcept : bytes_(bytes) {}

    [[nodiscard]] bool has(std::uint64_t position, std::uint64_t count) const noexcept {
        return position <= bytes_.size() && count <= bytes_.size() - position;
    }
    [[nodiscard]] std::uint8_t at(std::uint64_t position) const noexcept {
        return std::to_integer<std::uint8_t>(bytes_[static_cast<std::size_t>(position)]);
    }
    [[nodiscard]] std::string_view text(std::uint64_t position,
                                        std::uint64_t count) const noexcept {
        return {reinterpret_cast<const char*>(bytes_.data()) + position,
                static_cast<std::size_t>(count)};
    }

  private:
    std::span<const std::byte> bytes_;
};

/// The one extent of a text without characters.
constexpr std::byte no_extent{0};

bool is_name_character(char character) noexcept {
    const auto octet = static_cast<std::uint8_t>(character);
    return octet >= 0x20 && octet != 0x7F;
}

/// Adds what a group's or parameter's own lengths say about its extent. A length byte that a cut
/// file lacks counts as 0.
void measure_description(parameter_record& record, const section_bytes& section) noexcept {
    const auto length = section.has(record.description, 1) ? section.at(record.description) : 0u;
    record.end = record.description + 1 + length;
}

void measure_parameter(parameter_record& record, std::uint64_t body,
                       std::span<const std::byte> bytes) noexcept {
    const section_bytes section(bytes);
    record.makes_sense = false;
    if (!section.has(body, 2))
        return;
    const auto type = element_type_of(static_cast<std::int8_t>(section.at(body)));
    const auto extents = section.at(body + 1);
    if (!type || extents > parameter_dimensions::most || !section.has(body + 2, extents))
        return;
    record.makes_sense = true;
    record.type = *type;
    record.dimensions =
        parameter_dimensions(bytes.subspan(static_cast<std::size_t>(body) + 2, extents));
    record.data = body + 2 + extents;
    record.description = record.data + record.dimensions.product() * bytes_of(*type);
    measure_description(record, section);
    if (*type != element_type::character || extents != 0 || record.end == record.target)
        return;
    // Without dimensions there is one character by the formula, but some writers store none.
    auto without_character = record;
    without_character.dimensions = parameter_dimensions(std::span(&no_extent, 1));
    without_character.description = record.data;
    measure_description(without_character, section);
    if (without_character.end == record.target)
        record = without_character;
}

} // namespace

std::optional<parameter_record> record_at(std::span<const std::byte> bytes, std::uint64_t at,
                                          number_format format) noexcept {
    const section_bytes section(bytes);
    if (!section.has(at, 2))
        return std::nullopt;
    const auto length_byte = static_cast<std::int8_t>(section.at(at));
    const auto length = static_cast<std::uint64_t>(length_byte < 0 ? -length_byte : length_byte);
    const auto next_field = at + 2 + length;
    if (length == 0 || length > 127 || !section.has(at + 2, length + 2))
        return std::nullopt;

    parameter_record record;
    record.at = static_cast<std::size_t>(at);
    record.name = section.text(at + 2, length);
    if (!std::all_of(record.name.begin(), record.name.end(), is_name_character))
        return std::nullopt;
    record.id = static_cast<std::int8_t>(section.at(at + 1));
    record.locked = length_byte < 0;
    const auto next = read_unsigned_word(format, bytes.data() + next_field);
    // The distance counts from its own first byte.
    record.target = next == 0 ? 0 : next_field + next;
    if (record.id < 0) {
        record.description = next_field + 2;
        measure_description(record, section);
    } else {
        measure_parameter(record, next_field + 2, bytes);
    }
    return record;
}

std::string_view counted_text(std::span<const std::byte> bytes, std::uint64_t position,
                              std::uint64_t limit) noexcept {
    limit = std::min<std::uint64_t>(limit, bytes.size());
    if (position >= limit)
        return {};
    const section_bytes section(bytes);
    return section.text(position + 1,
                        std::min<std::uint64_t>(section.at(position), limit - position - 1));
}

} // namespace c3d
