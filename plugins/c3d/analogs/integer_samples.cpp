#include "plugins/c3d/analogs/integer_samples.hpp"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "plugins/c3d/analogs/analog_offsets.hpp"
#include "plugins/c3d/bytes/export_error.hpp"
#include "plugins/c3d/parameters/channel_entries.hpp"
#include "plugins/c3d/samples/sample_survey.hpp"

namespace c3d {

namespace {

/// What a reader makes of the words of a channel.
word_sign sign_of(const analog_encoding& encoding, std::optional<std::int16_t> offset,
                  const channel_scaling& channel, double general) {
    if (encoding.declared == word_sign::without)
        return word_sign::without;
    if (!offset || *offset >= 0)
        return word_sign::with;
    const auto reading = read_offset(*offset, encoding, channel.stored_samples(general));
    return reading.unsigned_samples ? word_sign::without : word_sign::with;
}

bool is_held(float sample, word_sign sign) {
    const auto word = std::nearbyint(sample);
    return sign == word_sign::with ? word >= -32768.0F && word <= 32767.0F
                                   : word >= 0.0F && word <= 65535.0F;
}

void require_held(const std::string& label, const sample_survey& found, word_sign sign) {
    if (!found.all_finite) {
        throw export_error("the analog channel '{}' has a value that is no finite number; integers "
                           "cannot hold it",
                           label);
    }
    for (auto sample : {found.lowest, found.highest}) {
        if (is_held(sample, sign))
            continue;
        throw export_error("the analog channel '{}' has a value that would be stored as {}; "
                           "integers of 16 bits {} sign hold {}",
                           label, sample, sign == word_sign::with ? "with a" : "without",
                           sign == word_sign::with ? "-32768 to 32767" : "0 to 65535");
    }
}

} // namespace

void require_words(const parameter_table& table, std::span<const analog_column> columns,
                   std::span<const channel_scaling> channels, double general,
                   schema::warnings& notes) {
    const auto encoding = analog_encoding_of(table, sample_storage::integer);
    const channel_entries offsets(table, "ANALOG", "OFFSET", single_value::of_all_channels);
    for (std::size_t i = 0; i < channels.size(); ++i) {
        const auto& channel = channels[i];
        if (channel.buffer.count() == 0)
            continue;
        const auto found = survey(channel.source(general), channel.buffer.count());
        require_held(columns[i].label, found, sign_of(encoding, offsets.word(i), channel, general));
        if (!found.all_whole) {
            notes.add("the analog channel '{}' is rounded to integers, in steps of {}",
                      columns[i].label, std::abs(double{channel.scale} * general));
        }
    }
}

} // namespace c3d
