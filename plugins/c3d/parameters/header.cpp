#include "plugins/c3d/parameters/header.hpp"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

#include "schema/file_text.hpp"

namespace c3d {

namespace {

using header_place::event_labels;
using header_place::event_statuses;
using header_place::event_times;

/// Bytes that carry nothing in any file: first and end.
constexpr std::array<std::pair<std::size_t, std::size_t>, 4> reserved_bytes = {{
    {header_place::word(13), header_place::word(148)},
    {header_place::word(152), header_place::word(153)},
    {header_place::word(198), header_place::word(199)},
    {header_place::word(235), 512},
}};

class block_reader {
  public:
    block_reader(number_format format, std::span<const std::byte, 512> block) noexcept
        : format_(format), block_(block) {}

    [[nodiscard]] std::uint16_t word(std::size_t number) const noexcept {
        return read_unsigned_word(format_, block_.data() + header_place::word(number));
    }
    [[nodiscard]] float real(std::size_t offset) const noexcept {
        return read_real(format_, block_.data() + offset);
    }
    [[nodiscard]] std::string_view characters(std::size_t offset,
                                              std::size_t count) const noexcept {
        return {reinterpret_cast<const char*>(block_.data()) + offset, count};
    }
    [[nodiscard]] std::uint8_t byte(std::size_t offset) const noexcept {
        return std::to_integer<std::uint8_t>(block_[offset]);
    }

  private:
    number_format format_;
    std::span<const std::byte, 512> block_;
};

bool is_printable(std::string_view text) noexcept {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

/// Without the key, words 151 and on may be anything: only what looks like an event is one.
std::vector<header_event> decode_events(const block_reader& block) {
    const bool has_key = block.word(150) == four_character_labels;
    std::size_t count = block.word(151);
    // More do not fit: where the key says that these are events, the count is off, else there are
    // none.
    if (count > most_header_events)
        count = has_key ? most_header_events : 0;
    const auto width = has_key ? header_place::event_label_bytes : 2;
    std::vector<header_event> events;
    for (std::size_t i = 0; i < count; ++i) {
        const auto time = block.real(event_times + 4 * i);
        const auto label =
            schema::without_padding(block.characters(event_labels + width * i, width));
        if (!std::isfinite(time))
            continue;
        if (!has_key && (label.empty() || !is_printable(label) || time < 0.0F))
            continue;
        events.push_back({time, block.byte(event_statuses + i), schema::as_utf8(label)});
    }
    return events;
}

} // namespace

header decode_header(number_format format, std::span<const std::byte, 512> bytes) {
    const block_reader block(format, bytes);
    header result;
    result.points = block.word(2);
    result.analog_values = block.word(3);
    result.first_frame = block.word(4);
    result.last_frame = block.word(5);
    result.interpolation_gap = block.word(6);
    result.scale = block.real(header_place::word(7));
    result.data_start = block.word(9);
    result.samples_per_frame = block.word(10);
    result.rate = block.real(header_place::word(11));
    result.events = decode_events(block);
    return result;
}

bool has_reserved_content(std::span<const std::byte, 512> block) noexcept {
    return std::any_of(reserved_bytes.begin(), reserved_bytes.end(), [&](const auto& range) {
        const auto bytes = block.subspan(range.first, range.second - range.first);
        return std::any_of(bytes.begin(), bytes.end(),
                           [](auto byte) { return byte != std::byte{0}; });
    });
}

void copy_reserved(std::span<const std::byte, 512> from, std::span<std::byte, 512> to) noexcept {
    for (const auto& [first, end] : reserved_bytes)
        std::copy_n(from.begin() + static_cast<std::ptrdiff_t>(first), end - first,
                    to.begin() + static_cast<std::ptrdiff_t>(first));
}

std::optional<std::string> stored_event_label(const std::string& label) {
    auto stored = schema::as_stored_within(label, header_place::event_label_bytes);
    return stored.size() <= header_place::event_label_bytes ? std::optional(std::move(stored))
                                                            : std::nullopt;
}

} // namespace c3d
