#include "plugins/c3d/analogs/write_scaling.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>

#include "plugins/c3d/analogs/analog_offsets.hpp"
#include "plugins/c3d/analogs/channel_scaling.hpp"
#include "plugins/c3d/analogs/integer_samples.hpp"
#include "plugins/c3d/parameters/channel_entries.hpp"
#include "plugins/c3d/parameters/put_parameter.hpp"

namespace c3d {

namespace {

/// What the channels say.
std::vector<channel_scaling> wanted_scaling(const parameter_table& table,
                                            std::span<const analog_column> columns) {
    const channel_entries former(table, "ANALOG", "SCALE", single_value::of_all_channels);
    std::vector<channel_scaling> channels;
    for (const auto& column : columns) {
        const double offset = std::isfinite(column.offset) ? double{column.offset} : 0.0;
        const bool was_zero = column.column_read && former.number(*column.column_read) == 0.0;
        channels.push_back({strata::share_channel(column.set, 0), column.scale, offset, was_zero});
    }
    return channels;
}

double general_scale(const parameter_table& table, std::span<const channel_scaling> channels,
                     schema::warnings& notes) {
    const auto general = table.number("ANALOG", "GEN_SCALE").value_or(1.0);
    const bool all_as_read =
        std::all_of(channels.begin(), channels.end(),
                    [&](const auto& channel) { return channel.is_as_read(general); });
    if (is_scale(general) || (all_as_read && !channels.empty()) || channels.empty())
        return general;
    notes.add("ANALOG:GEN_SCALE is {}; it is written as 1", general);
    return 1.0;
}

std::optional<std::int16_t> as_word(double offset) {
    if (!(offset >= -32768.0 && offset <= 65535.0) || offset != std::floor(offset))
        return std::nullopt;
    return static_cast<std::int16_t>(static_cast<std::int32_t>(offset));
}

/// The offset that a reader makes of a word. It asks the samples where the word alone does not
/// tell.
double offset_of_word(std::int16_t word, const analog_encoding& encoding,
                      const channel_scaling& channel, double general) {
    if (word >= 0)
        return word;
    return read_offset(word, encoding, channel.stored_samples(general)).offset;
}

bool offsets_are_told(const parameter_table& table, const analog_encoding& encoding,
                      std::span<const channel_scaling> channels, double general, surplus rule) {
    const channel_entries entries(table, "ANALOG", "OFFSET", single_value::of_all_channels);
    if (entries.empty() || !may_stay(entries, channels.size(), rule))
        return false;
    for (std::size_t i = 0; i < channels.size(); ++i) {
        auto told = entries.number(i).value_or(0.0);
        if (const auto word = entries.word(i))
            told = offset_of_word(*word, encoding, channels[i], general);
        if (told != channels[i].offset)
            return false;
    }
    return true;
}

void put_real_offsets(written_group& group, std::span<const channel_scaling> channels) {
    std::vector<float> offsets;
    for (const auto& channel : channels)
        offsets.push_back(static_cast<float>(channel.offset));
    put_reals(group, "OFFSET", offsets);
}

void put_word_offsets(written_group& group, const analog_encoding& encoding,
                      std::span<channel_scaling> channels, std::span<const analog_column> columns,
                      double general, schema::warnings& notes) {
    std::vector<std::int64_t> words;
    for (std::size_t i = 0; i < channels.size(); ++i) {
        auto& channel = channels[i];
        const auto word = as_word(channel.offset);
        if (word && offset_of_word(*word, encoding, channel, general) == channel.offset) {
            words.push_back(*word);
            continue;
        }
        notes.add("the offset of the analog channel '{}' is {}, which ANALOG:OFFSET cannot hold; "
                  "it is written as 0",
                  columns[i].label, channel.offset);
        channel.offset = 0.0;
        words.push_back(0);
    }
    put_words(group, "OFFSET", words);
}

void put_offsets(parameter_tree& tree, std::span<channel_scaling> channels,
                 std::span<const analog_column> columns, double general, sample_storage storage,
                 surplus rule, schema::warnings& notes) {
    analog_encoding encoding;
    bool are_reals = false;
    {
        const auto table = tree.as_table();
        encoding = analog_encoding_of(table, storage);
        if (offsets_are_told(table, encoding, channels, general, rule))
            return;
        const auto* former = table.find("ANALOG", "OFFSET");
        are_reals = former && former->type == element_type::real;
    }
    auto& group = tree.reach("ANALOG");
    if (are_reals)
        put_real_offsets(group, channels);
    else
        put_word_offsets(group, encoding, channels, columns, general, notes);
}

void put_scales(parameter_tree& tree, std::span<const channel_scaling> channels, surplus rule) {
    std::vector<float> scales;
    for (const auto& channel : channels)
        scales.push_back(channel.scale);
    {
        const auto table = tree.as_table();
        const channel_entries entries(table, "ANALOG", "SCALE", single_value::of_all_channels);
        bool told = !entries.empty() && may_stay(entries, scales.size(), rule);
        for (std::size_t i = 0; told && i < scales.size(); ++i)
            told = entries.number(i).value_or(1.0) == double{scales[i]};
        if (told)
            return;
    }
    put_reals(tree.reach("ANALOG"), "SCALE", scales);
}

void make_all_fine(const parameter_table& table, std::span<const analog_column> columns,
                   std::span<channel_scaling> channels, double general, const stored_form& form,
                   schema::warnings& notes) {
    if (declared_sign(table) == word_sign::without)
        return;
    for (std::size_t i = 0; i < channels.size(); ++i) {
        if (!form.was_integer || !columns[i].column_read)
            make_fine(channels[i], columns[i].label, general, notes);
    }
}

} // namespace

std::vector<sample_source> put_analog_scaling(parameter_tree& tree,
                                              std::span<const analog_column> columns,
                                              const stored_form& form, surplus rule,
                                              schema::warnings& notes) {
    auto channels = wanted_scaling(tree.as_table(), columns);
    const auto general = general_scale(tree.as_table(), channels, notes);
    for (std::size_t i = 0; i < channels.size(); ++i) {
        if (!channels[i].is_as_read(general))
            make_readable(channels[i], columns[i].label, general, notes);
    }
    if (form.storage == sample_storage::integer)
        make_all_fine(tree.as_table(), columns, channels, general, form, notes);
    put_real(tree.reach("ANALOG"), "GEN_SCALE", static_cast<float>(general));
    put_scales(tree, channels, rule);
    put_offsets(tree, channels, columns, general, form.storage, rule, notes);
    if (form.storage == sample_storage::integer)
        require_words(tree.as_table(), columns, channels, general, notes);
    std::vector<sample_source> sources;
    sources.reserve(channels.size());
    for (const auto& channel : channels)
        sources.push_back(channel.source(general));
    return sources;
}

} // namespace c3d
