#include "plugins/c3d/analogs/read_scaling.hpp"

#include <cstddef>

#include "plugins/c3d/analogs/analog_offsets.hpp"
#include "plugins/c3d/parameters/channel_entries.hpp"
#include "plugins/c3d/samples/buffer_elements.hpp"

namespace c3d {

namespace {

void remove_sign(std::span<float> samples) noexcept {
    for (auto& sample : samples)
        sample = sample < 0.0F ? sample + 65536.0F : sample;
}

} // namespace

stored_scaling apply_scaling(std::span<strata::channel_buffer> channels,
                             const parameter_table& parameters, sample_storage storage,
                             schema::warnings& notes) {
    // Files without these parameters hold values as they are.
    const auto general = parameters.number("ANALOG", "GEN_SCALE").value_or(1.0);
    const channel_entries scales(parameters, "ANALOG", "SCALE", single_value::of_all_channels);
    const channel_entries offsets(parameters, "ANALOG", "OFFSET", single_value::of_all_channels);
    const auto encoding = analog_encoding_of(parameters, storage);
    stored_scaling result;
    for (std::size_t i = 0; i < channels.size(); ++i) {
        auto& buffer = channels[i];
        const auto scale = scales.number(i).value_or(1.0);
        offset_reading offset{offsets.number(i).value_or(0.0), false};
        if (const auto word = offsets.word(i)) {
            offset = read_offset(*word, encoding, floats_of(buffer));
            if (offset.offset != static_cast<double>(*word) &&
                encoding.declared != word_sign::without) {
                notes.add("ANALOG:OFFSET of channel {} is {} without ANALOG:FORMAT being UNSIGNED; "
                          "read as {}",
                          i + 1, *word, offset.offset);
            }
        }
        if (offset.unsigned_samples)
            remove_sign(floats_of(buffer));
        // Some writers leave 0 at channels that nobody used; what the file says stays.
        if (scale == 0.0 || general == 0.0) {
            notes.add("the scale of an analog channel is 0; its values are 0");
        }
        buffer.set_scaling(offset.offset, scale * general);
        result.scales.push_back(static_cast<float>(scale));
        result.offsets.push_back(static_cast<float>(offset.offset));
    }
    return result;
}

} // namespace c3d
