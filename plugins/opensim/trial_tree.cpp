#include "plugins/opensim/trial_tree.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <span>
#include <string_view>
#include <utility>

#include <strata/data_set.hpp>

#include "plugins/opensim/sample_rows.hpp"
#include "schema/channel_names.hpp"
#include "schema/names.hpp"
#include "schema/partial_reading.hpp"
#include "schema/point_kind_table.hpp"
#include "schema/write_attribute.hpp"

namespace opensim {

namespace attribute = schema::attribute;

namespace {

namespace parameter = schema::parameter;

/// Texts that a parameter of a C3D file can have; those behind are in LABELS2, LABELS3 and so on.
constexpr std::size_t texts_in_part = 255;
constexpr std::int32_t intel_processor = 84;

std::vector<std::string> copies(std::size_t count, std::string_view text) {
    return std::vector<std::string>(count, std::string(text));
}

/// As the files' residuals: 0 where a point was seen, −1 elsewhere.
std::vector<strata::channel_buffer> residuals_of(const std::vector<strata::channel_buffer>& points,
                                                 std::uint64_t frames) {
    auto residuals =
        strata::channel_buffer::allocate(strata::data_type::float32, frames, points.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        const auto x = numbers_of(points[i]).first(static_cast<std::size_t>(frames));
        auto* target = reinterpret_cast<float*>(residuals[i].data());
        std::ranges::transform(x, target,
                               [](double place) { return std::isnan(place) ? -1.0F : 0.0F; });
    }
    return residuals;
}

/// What the raw sets of points and of analog channels have in common.
void describe_channels(strata::data_set& set, const channel_table& channels, std::string_view type,
                       const time_base& time) {
    const auto count = channels.labels.size();
    schema::write_texts(set, attribute::labels, channels.labels);
    schema::write_texts(set, attribute::set_names, schema::distinct_names(channels.labels));
    schema::write_texts(set, attribute::types, copies(count, type));
    schema::write_texts(set, attribute::units, channels.units);
    schema::write_texts(set, attribute::descriptions, copies(count, ""));
    schema::write_number(set, attribute::num_samples, static_cast<std::int64_t>(time.frames));
    schema::write_number(set, attribute::sample_rate, time.rate);
    schema::write_number(set, attribute::start_time, time.start_time_s());
}

void create_points(strata::data_group& data, channel_table& points, const time_base& time) {
    auto residuals = residuals_of(points.samples, time.frames);
    auto set = strata::create_channel_set(data, schema::name::points, 3, time.frames,
                                          std::move(points.samples));
    describe_channels(set, points, schema::marker_kind.word, time);
    if (!residuals.empty())
        strata::create_row_attribute(set, attribute::residuals, std::move(residuals));
}

void create_analogs(strata::data_group& data, channel_table& analogs, const time_base& time) {
    const auto count = analogs.labels.size();
    auto set = strata::create_channel_set(data, schema::name::analogs, 1, time.frames,
                                          std::move(analogs.samples));
    describe_channels(set, analogs, schema::analog_type, time);
    schema::write_numbers(set, attribute::gain, std::vector<std::int32_t>(count, 0));
    schema::write_numbers(set, attribute::scales, std::vector<float>(count, 1.0F));
    schema::write_numbers(set, attribute::offsets, std::vector<float>(count, 0.0F));
}

std::int32_t as_int32(std::uint64_t value) {
    constexpr std::uint64_t largest = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::min(value, largest));
}

void create_header(strata::data_group& format, const trial_content& content) {
    auto header = format.create_group(schema::name::header);
    const auto& time = content.time;
    schema::write_number(header, attribute::analog_samples_per_frame, std::int32_t{1});
    schema::write_number(header, attribute::interpolation_gap, std::int32_t{0});
    schema::write_number(header, attribute::analog_values_per_frame,
                         as_int32(content.analogs.labels.size()));
    schema::write_number(header, attribute::first_frame, as_int32(time.first_frame));
    schema::write_number(header, attribute::last_frame,
                         as_int32(time.first_frame + time.frames - 1));
    // Text has neither; these lose least.
    schema::write_number(header, attribute::processor, intel_processor);
    schema::write_text(header, attribute::storage, "real");
}

/// In the type in which a C3D file holds it.
void write_count(strata::data_group& group, const char* name, std::uint64_t count) {
    if (std::in_range<std::int16_t>(count))
        schema::write_number(group, name, static_cast<std::int16_t>(count));
    else
        schema::write_number(group, name, static_cast<float>(count));
}

void write_list(strata::data_group& group, const std::string& name,
                const std::vector<std::string>& texts) {
    const std::span all(texts);
    std::size_t first = 0;
    for (int part = 1; part == 1 || first < all.size(); ++part) {
        const auto here = all.subspan(first, std::min(texts_in_part, all.size() - first));
        const strata::data_shape shape({static_cast<std::int64_t>(here.size())}, false);
        const auto numbered = part == 1 ? name : name + std::to_string(part);
        schema::write_texts(group, numbered, shape, here);
        first += here.size();
    }
}

strata::data_group create_parameters(strata::data_group& metadata, const char* name,
                                     const channel_table& channels, double rate) {
    auto group = metadata.create_group(name);
    write_count(group, parameter::used, channels.labels.size());
    schema::write_number(group, parameter::rate, static_cast<float>(rate));
    write_list(group, parameter::labels, channels.labels);
    write_list(group, parameter::descriptions, copies(channels.labels.size(), ""));
    return group;
}

void create_metadata(strata::data_group& format, const trial_content& content) {
    auto metadata = format.create_group(schema::name::metadata);
    auto point =
        create_parameters(metadata, schema::name::point_group, content.points, content.time.rate);
    write_count(point, parameter::frames, content.time.frames);
    if (!content.points.units.empty() && content.points.units.front() != schema::unknown_unit)
        schema::write_text(point, parameter::units, content.points.units.front());
    auto analog =
        create_parameters(metadata, schema::name::analog_group, content.analogs, content.time.rate);
    write_list(analog, parameter::units, content.analogs.units);
    schema::write_number(analog, parameter::bits, std::int16_t{schema::default_analog_resolution});
}

/// Lets go of channels that nobody wants.
void leave_out(channel_table& channels, std::string_view kind, schema::unread_channels& unread) {
    const auto names = schema::distinct_names(channels.labels);
    for (std::size_t i = 0; i < names.size(); ++i)
        unread.add(kind, channels.labels[i].empty() ? names[i] : channels.labels[i],
                   channels.units[i]);
    channels = {};
}

} // namespace

void create_tree(strata::data_group& target, trial_content content) {
    auto format = target.create_group(schema::format);
    auto data = format.create_group(schema::name::data);
    create_metadata(format, content);
    create_header(format, content);
    const schema::wanted_kinds wanted(target);
    schema::unread_channels unread;
    if (!wanted.contain(schema::marker_kind.group_name))
        leave_out(content.points, schema::marker_kind.group_name, unread);
    if (!wanted.contain(schema::name::analogs))
        leave_out(content.analogs, schema::name::analogs, unread);
    create_points(data, content.points, content.time);
    create_analogs(data, content.analogs, content.time);
    schema::keep_unread(target, unread);
}

} // namespace opensim
