#include "plugins/c3d/frames/frame_range.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string_view>
#include <vector>

#include <strata/data_set.hpp>

#include "plugins/c3d/bytes/export_error.hpp"
#include "plugins/c3d/bytes/format_limits.hpp"
#include "plugins/c3d/frames/frame_count.hpp"
#include "plugins/c3d/parameters/header_attribute.hpp"
#include "plugins/c3d/parameters/parameter_values.hpp"
#include "plugins/c3d/parameters/put_parameter.hpp"
#include "schema/names.hpp"
#include "schema/read_attribute.hpp"

namespace c3d {

namespace {

constexpr std::uint64_t largest_frame = 0xFFFFFFFF;

bool is_exact_real(std::uint64_t count) noexcept {
    return static_cast<double>(static_cast<float>(count)) == static_cast<double>(count);
}

bool is_long(const frame_range& range) noexcept {
    return range.frames >= largest_word || range.last() > largest_word;
}

void put_frames(written_group& point, std::uint64_t frames) {
    auto* item = point.find("FRAMES");
    const bool is_real = item && item->type == element_type::real && is_exact_real(frames);
    if (item && item->type == element_type::real && !is_real)
        item->type = element_type::integer;
    if (frames < largest_word || is_real) {
        put_count(point, "FRAMES", frames, new_lock::on);
        if (point.find("LONG_FRAMES"))
            put_real(point, "LONG_FRAMES", static_cast<float>(frames));
        return;
    }
    put_count(point, "FRAMES", largest_word, new_lock::on);
    // A count that a real cannot hold exactly is left to the fields of TRIAL.
    if (is_exact_real(frames))
        put_real(point, "LONG_FRAMES", static_cast<float>(frames));
    else
        point.remove("LONG_FRAMES");
}

/// The range of the file that was read.
std::optional<frame_range> range_read(const parameter_table& parameters,
                                      const strata::data_group& format) {
    using schema::below_format::points;
    const auto first = header_attribute(format, schema::attribute::first_frame);
    const auto last = header_attribute(format, schema::attribute::last_frame);
    if (!format.exists_set(points) || !first || !last)
        return std::nullopt;
    const auto word_of = [](const strata::data_attribute& number) {
        return schema::read_number<std::uint16_t>(number).value_or(0);
    };
    const auto shape = format.retrieve_set(points).shape(false);
    const auto frames = static_cast<std::uint64_t>(shape.dimensions().back());
    const auto claims = frame_claims_of(parameters, word_of(first), word_of(last));
    return frame_range{frames, first_frame_number(claims, frames)};
}

/// What a reader makes of the parameters and the header together.
bool is_told(const parameter_table& parameters, const frame_range& range) {
    const auto [first, last] = header_range_of(range);
    const auto claims = frame_claims_of(parameters, first, last);
    const auto count = claimed_frames(claims);
    return count && count->frames == range.frames &&
           first_frame_number(claims, range.frames) == range.first;
}

void put_field(written_group& trial, std::string_view name, std::uint64_t number) {
    const std::array<std::int64_t, 2> words = {static_cast<std::int64_t>(number & 0xFFFFU),
                                               static_cast<std::int64_t>(number >> 16U)};
    auto& item = trial.reach(name);
    const bool is_pair = item.type == element_type::integer && item.element_count() == 2;
    set_words(item, words, is_pair ? item.extents : std::vector<std::uint8_t>{2});
}

} // namespace

frame_range frame_range_of(std::uint64_t frames, double rate, double start_time_s) {
    const auto before = std::round(rate * start_time_s);
    frame_range range{frames, 1};
    if (before > 0.0 && before < static_cast<double>(largest_frame))
        range.first += static_cast<std::uint64_t>(before);
    if (before >= static_cast<double>(largest_frame) || range.frames > largest_frame ||
        (range.frames > 0 && range.last() > largest_frame)) {
        throw export_error("{} frames from frame {} on are more than a C3D file can number ({})",
                           range.frames, before + 1.0, largest_frame);
    }
    return range;
}

header_range header_range_of(const frame_range& range) noexcept {
    const auto word = [](std::uint64_t number) { return static_cast<std::uint16_t>(number); };
    if (range.last() <= largest_word)
        return {word(range.first), word(range.last())};
    // From 1 to 65,535 there are as many frames as here: a reader would believe the 1.
    if (range.frames == largest_word)
        return {word(std::min(range.first, largest_word)), word(largest_word)};
    return {1, word(largest_word)};
}

void put_frame_range(parameter_tree& tree, const frame_range& range,
                     const strata::data_group& format) {
    const auto former = range_read(tree.as_table(), format);
    put_frames(tree.reach("POINT"), range.frames);
    auto* trial = tree.find("TRIAL");
    const bool has_fields =
        trial && (trial->find("ACTUAL_START_FIELD") || trial->find("ACTUAL_END_FIELD"));
    if (former && !has_fields && !is_long(range))
        return;
    if (has_fields && former == range && is_told(tree.as_table(), range))
        return;
    auto& group = tree.reach("TRIAL");
    put_field(group, "ACTUAL_START_FIELD", range.first);
    put_field(group, "ACTUAL_END_FIELD", range.last());
}

} // namespace c3d
