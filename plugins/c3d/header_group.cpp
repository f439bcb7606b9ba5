#include "plugins/c3d/header_group.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <vector>

#include "plugins/c3d/parameters/kept_records.hpp"
#include "schema/names.hpp"
#include "schema/write_attribute.hpp"

namespace c3d {

namespace attribute = schema::attribute;

namespace {

std::int32_t as_int32(std::uint64_t value) {
    constexpr std::uint64_t largest = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::min(value, largest));
}

void create_events(strata::data_group& header, const std::vector<header_event>& events) {
    std::vector<float> times;
    std::vector<std::string> labels;
    std::vector<std::int32_t> statuses;
    for (const auto& event : events) {
        times.push_back(event.time);
        labels.push_back(event.label);
        statuses.push_back(event.status);
    }
    schema::write_numbers(header, attribute::event_times, times);
    schema::write_texts(header, attribute::event_labels, labels);
    schema::write_numbers(header, attribute::event_statuses, statuses);
}

void create_blocks(strata::data_group& header, const c3d_file& file) {
    std::vector<std::int16_t> head(file.section_head.size());
    std::transform(file.section_head.begin(), file.section_head.end(), head.begin(),
                   [](auto byte) { return std::to_integer<std::int16_t>(byte); });
    schema::write_numbers(header, attribute::section_head, head);
    if (!has_reserved_content(file.block))
        return;
    const strata::data_shape shape({static_cast<std::int64_t>(file.block.size())}, false);
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(file.block.data());
    schema::write_numbers(header, attribute::header_block, shape,
                          std::span(bytes, file.block.size()));
}

} // namespace

void create_header_group(strata::data_group& format, const c3d_file& file,
                         const frame_layout& layout, const metadata_names& names) {
    auto header = format.create_group(schema::name::header);
    const auto& head = file.head;
    schema::write_number(header, attribute::analog_samples_per_frame,
                         as_int32(layout.samples_per_frame));
    schema::write_number(header, attribute::interpolation_gap,
                         std::int32_t{head.interpolation_gap});
    schema::write_number(header, attribute::analog_values_per_frame,
                         as_int32(layout.channels * layout.samples_per_frame));
    schema::write_number(header, attribute::first_frame, std::int32_t{head.first_frame});
    schema::write_number(header, attribute::last_frame, std::int32_t{head.last_frame});
    schema::write_number(header, attribute::processor, static_cast<std::int32_t>(file.format));
    schema::write_text(header, attribute::storage,
                       layout.storage == sample_storage::real ? "real" : "integer");
    schema::write_number(header, attribute::point_scale, layout.scale);
    create_blocks(header, file);
    create_events(header, head.events);
    create_kept_records(header, file.parameters, names);
}

} // namespace c3d
