#include "plugins/c3d/header_block.hpp"

#include <algorithm>
#include <string>
#include <utility>

#include "plugins/c3d/bytes/export_error.hpp"
#include "plugins/c3d/bytes/format_limits.hpp"
#include "plugins/c3d/bytes/number_format.hpp"
#include "plugins/c3d/parameters/header_attribute.hpp"
#include "schema/file_text.hpp"
#include "schema/names.hpp"
#include "schema/read_attribute.hpp"

namespace c3d {

namespace {

class block_writer {
  public:
    block_writer(header_block& block, number_format numbers) noexcept
        : block_(block), numbers_(numbers) {}

    void word(std::size_t number, std::uint64_t value) noexcept {
        write_word(numbers_, block_.data() + header_place::word(number),
                   static_cast<std::uint16_t>(value));
    }
    void real(std::size_t place, float value) noexcept {
        write_real(numbers_, block_.data() + place, value);
    }
    void byte(std::size_t place, unsigned value) noexcept {
        block_[place] = static_cast<std::byte>(value);
    }
    void label(std::size_t place, const std::string& text) noexcept {
        for (std::size_t i = 0; i < header_place::event_label_bytes; ++i)
            block_[place + i] = static_cast<std::byte>(i < text.size() ? text[i] : ' ');
    }

  private:
    header_block& block_;
    number_format numbers_;
};

void keep_reserved(header_block& block, const strata::data_group& format) {
    const auto former = schema::read_numbers<std::uint8_t>(
        header_attribute(format, schema::attribute::header_block));
    if (former.size() != block.size())
        return;
    copy_reserved(std::as_bytes(std::span<const std::uint8_t, 512>(former.data(), 512)), block);
}

void write_events(block_writer& writer, const std::vector<header_event>& events) {
    writer.word(150, four_character_labels);
    writer.word(151, events.size());
    for (std::size_t i = 0; i < events.size(); ++i) {
        writer.real(header_place::event_times + 4 * i, events[i].time);
        writer.byte(header_place::event_statuses + i, events[i].status);
        writer.label(header_place::event_labels + header_place::event_label_bytes * i,
                     stored_event_label(events[i].label).value_or(""));
    }
}

} // namespace

header_block header_block_of(const header_content& content, const strata::data_group& format,
                             number_format numbers) {
    header_block block{};
    keep_reserved(block, format);
    block_writer writer(block, numbers);
    const auto [first, last] = header_range_of(content.range);
    writer.byte(0, 2);
    writer.byte(1, 80);
    writer.word(2, content.points);
    writer.word(3, content.channels * content.samples_per_frame);
    writer.word(4, first);
    writer.word(5, last);
    writer.word(6, content.interpolation_gap);
    writer.real(header_place::word(7), content.scale);
    writer.word(9, content.data_start);
    writer.word(10, content.samples_per_frame);
    writer.real(header_place::word(11), content.rate);
    write_events(writer, content.events);
    return block;
}

std::uint64_t interpolation_gap_of(const strata::data_group& format) {
    const auto gap = schema::read_number<std::int64_t>(
                         header_attribute(format, schema::attribute::interpolation_gap))
                         .value_or(0);
    if (gap < 0 || std::cmp_greater(gap, largest_word)) {
        throw export_error("the maximum interpolation gap is {} frames; a C3D file holds 0 to {}",
                           gap, largest_word);
    }
    return static_cast<std::uint64_t>(gap);
}

} // namespace c3d
