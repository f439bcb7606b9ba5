// Analog channels on their way between a file and the data store.
//
// | file            |                                                                   |
// |-----------------|-------------------------------------------------------------------|
// | read_analogs    | a file's channels become the set `Analogs`                        |
// | read_scaling    | their samples get scale and offset                                |
// | analog_offsets  | what an offset word means, and whether samples have a sign        |
// | analog_columns  | the channels that are written, in the order of the file           |
// | write_analogs   | what ANALOG says of them                                          |
// | write_scaling   | their values become samples; what ANALOG says of scale and offset |
// | integer_samples | whether integers can hold them                                    |
// | channel_scaling | the scale and the offset with which one channel survives that     |

#pragma once

#include <cstdint>
#include <vector>

#include <strata/data_group.hpp>
#include <strata/plugin/channel_buffer.hpp>

#include "plugins/c3d/frames/frame_layout.hpp"
#include "plugins/c3d/parameters/c3d_file.hpp"
#include "schema/partial_reading.hpp"

namespace c3d {

/// The analog samples in memory: `float32` elements with the raw values of the file, a buffer for
/// each channel.
struct analog_samples {
    std::vector<strata::channel_buffer> channels;

    [[nodiscard]] std::vector<float*> targets() const;
};

/// Buffers for all samples of this many channels, not initialised.
[[nodiscard]] analog_samples allocate_analogs(const frame_layout& layout, std::uint64_t channels);

/// The channels that were not read.
void add_unread_analogs(schema::unread_channels& unread, const c3d_file& file,
                        const frame_layout& layout);

/// The input range that an entry of ANALOG:GAIN stands for; codes other than 0 to 5 mean nothing to
/// anybody and give 0.
[[nodiscard]] std::int32_t gain_code_of(double stored) noexcept;

/// Creates the set `Analogs` of `data`: values in physical units, (raw − offset) × scale × general
/// scale, and what describes them, of all channels or, where none was read, of none. The samples
/// have been decoded with the sign that ANALOG:FORMAT declares, by default with one.
void create_analogs(strata::data_group& data, const c3d_file& file, const frame_layout& layout,
                    analog_samples samples, schema::warnings& notes);

} // namespace c3d
