#include "plugins/c3d/analogs/write_analogs.hpp"

#include <algorithm>
#include <cmath>
#include <string>

#include "plugins/c3d/analogs/read_analogs.hpp"
#include "plugins/c3d/analogs/write_scaling.hpp"
#include "plugins/c3d/bytes/export_error.hpp"
#include "plugins/c3d/bytes/format_limits.hpp"
#include "plugins/c3d/frames/frame_layout.hpp"
#include "plugins/c3d/parameters/put_entries.hpp"
#include "plugins/c3d/parameters/put_parameter.hpp"

namespace c3d {

namespace {

constexpr std::uint64_t most_values_per_frame = largest_word;
constexpr std::size_t least_label_width = 4;

void require_room(std::uint64_t channels, std::uint64_t samples_per_frame) {
    if (channels <= most_values_per_frame && samples_per_frame <= most_values_per_frame &&
        channels * samples_per_frame <= most_values_per_frame) {
        return;
    }
    throw export_error("{} analog channels with {} samples a frame are {} values a frame; a C3D "
                       "file holds {}",
                       channels, samples_per_frame, channels * samples_per_frame,
                       most_values_per_frame);
}

/// The rate of the channels, when it is the one that the samples of a frame give.
float told_rate(const analog_rate& rate) {
    const auto samples = static_cast<double>(rate.samples_per_frame);
    // Others divide the rates as they are stored.
    const auto computed = samples * double{static_cast<float>(rate.point_rate)};
    const bool agrees = rate.rate > 0.0 && (rate.point_rate <= 0.0 ||
                                            std::abs(rate.rate / rate.point_rate - samples) <=
                                                rate_tolerance * samples);
    const auto told = static_cast<float>(agrees ? rate.rate : computed);
    if (!std::isfinite(told))
        throw export_error("ANALOG:RATE would be {} Hz, more than a C3D file holds", computed);
    return told;
}

/// Whether the rate of a file without channels gives their ratio. A rate of 0 says that there is
/// none.
bool ratio_is_told(double stored, const analog_rate& rate) {
    return stored == 0.0 || rate.point_rate <= 0.0 ||
           std::max(1.0, std::round(stored / rate.point_rate)) ==
               static_cast<double>(rate.samples_per_frame);
}

/// Files hold other numbers than codes in GAIN, too: those stay with their channels until a script
/// gives these another one.
void put_gains(parameter_tree& tree, std::span<const analog_column> columns, surplus rule) {
    std::vector<std::int64_t> codes;
    {
        const auto table = tree.as_table();
        const channel_entries former(table, "ANALOG", "GAIN", single_value::of_all_channels);
        bool told = former.empty() || may_stay(former, columns.size(), rule);
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const auto& column = columns[i];
            told = told && gain_code_of(former.number(i).value_or(0.0)) == column.gain;
            const auto code =
                column.column_read ? former.number(*column.column_read).value_or(0.0) : 0.0;
            const bool is_kept =
                code >= -32768.0 && code <= 32767.0 && gain_code_of(code) == column.gain;
            codes.push_back(is_kept ? static_cast<std::int64_t>(code) : column.gain);
        }
        if (told)
            return;
    }
    put_words(tree.reach("ANALOG"), "GAIN", codes);
}

/// Without channels the lists have no entries.
std::vector<sample_source> remove_entries(parameter_tree& tree, surplus rule) {
    auto& group = tree.reach("ANALOG");
    if (rule == surplus::dropped) {
        put_entries(tree, {"ANALOG", "UNITS"}, {}, 4, rule, single_value::of_all_channels);
        for (const auto* name : {"SCALE", "OFFSET", "GAIN"}) {
            if (const auto* item = group.find(name); item && !item->extents.empty())
                put_words(group, name, {});
        }
    }
    return {};
}

} // namespace

std::vector<sample_source> put_analogs(parameter_tree& tree, std::span<const analog_column> columns,
                                       const analog_rate& rate, const stored_form& form,
                                       surplus rule, schema::warnings& notes) {
    require_room(columns.size(), rate.samples_per_frame);
    put_count(tree.reach("ANALOG"), "USED", columns.size(), new_lock::on);
    put_entries(tree, {"ANALOG", "LABELS"}, texts_of_columns(columns, &analog_column::label),
                least_label_width, rule);
    put_entries(tree, {"ANALOG", "DESCRIPTIONS"},
                texts_of_columns(columns, &analog_column::description), 1, rule);
    if (columns.empty()) {
        if (!ratio_is_told(tree.as_table().number("ANALOG", "RATE").value_or(0.0), rate))
            put_real(tree.reach("ANALOG"), "RATE", told_rate(rate), new_lock::on);
        return remove_entries(tree, rule);
    }
    auto sources = put_analog_scaling(tree, columns, form, rule, notes);
    put_entries(tree, {"ANALOG", "UNITS"}, texts_of_columns(columns, &analog_column::unit), 4, rule,
                single_value::of_all_channels);
    put_real(tree.reach("ANALOG"), "RATE", told_rate(rate), new_lock::on);
    put_gains(tree, columns, rule);
    return sources;
}

} // namespace c3d
