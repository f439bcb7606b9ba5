#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <strata/plugin/channel_buffer.hpp>

#include "plugins/c3d/samples/sample_source.hpp"
#include "schema/warnings.hpp"

namespace c3d {

/// How one analog channel is going to be stored. `general` is the GEN_SCALE of all channels.
struct channel_scaling {
    strata::channel_buffer buffer;
    float scale = 1.0F;
    double offset = 0.0;
    bool was_zero = false; ///< the scale in the file that was read

    /// True when the elements are those that were read, with this scale and offset.
    [[nodiscard]] bool is_as_read(double general) const noexcept;
    [[nodiscard]] sample_source source(double general) const;
    [[nodiscard]] std::vector<float> stored_samples(double general) const;
};

/// True when values can be divided by it.
[[nodiscard]] bool is_scale(double scale) noexcept;

/// Gives a channel whose samples are computed a scale and an offset that the values survive, and
/// notes what had to be changed: a scale that is none becomes 1 (but a 0 of the file stays while
/// all values are 0), one that takes the stored numbers out of the range of reals becomes another,
/// and an offset that leaves them too few digits becomes 0.
void make_readable(channel_scaling& channel, const std::string& label, double general,
                   schema::warnings& notes);

/// Gives a channel whose values integers of 16 bits would round, with the scale that it has, the
/// finest scale that they hold it with, and no offset, and notes that. Values beyond the range of
/// these integers are nobody's to scale: they stay as they are.
void make_fine(channel_scaling& channel, const std::string& label, double general,
               schema::warnings& notes);

} // namespace c3d
