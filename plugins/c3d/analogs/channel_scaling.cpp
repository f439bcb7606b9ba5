#include "plugins/c3d/analogs/channel_scaling.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>

#include "plugins/c3d/samples/buffer_elements.hpp"
#include "plugins/c3d/samples/sample_survey.hpp"

namespace c3d {

namespace {

using float_limits = std::numeric_limits<float>;

/// What integers of 16 bits hold, with some room.
constexpr double wanted_range = 32000.0;

/// How far a value that is read again may be off, as a part of the channel's largest one.
constexpr double tolerance = 2.0 * float_limits::epsilon();
/// Up to this part of the largest stored number, an offset keeps within the tolerance: with it a
/// stored number is at most four times as large, and is off by half an epsilon of itself.
constexpr double harmless_offset = 3.0;

/// The largest magnitude of the finite values.
double largest_value(const strata::channel_buffer& buffer) {
    double largest = 0.0;
    with_elements(buffer, [&](const auto* elements) {
        const auto offset = buffer.offset();
        const auto factor = buffer.factor();
        for (std::uint64_t i = 0; i < buffer.count(); ++i) {
            const auto magnitude = std::abs((static_cast<double>(elements[i]) - offset) * factor);
            largest = magnitude > largest && std::isfinite(magnitude) ? magnitude : largest;
        }
    });
    return largest;
}

/// True when no sample is off by more than `allowed` after it was stored and read.
bool samples_survive(const channel_scaling& channel, double divisor, double allowed) {
    bool survive = true;
    with_elements(channel.buffer, [&](const auto* elements) {
        const auto offset = channel.buffer.offset();
        const auto factor = channel.buffer.factor();
        for (std::uint64_t i = 0; i < channel.buffer.count() && survive; ++i) {
            const auto value = (static_cast<double>(elements[i]) - offset) * factor;
            const auto stored = static_cast<float>(value / divisor + channel.offset);
            const auto again = (double{stored} - channel.offset) * divisor;
            survive = !(std::abs(again - value) > allowed);
        }
    });
    return survive;
}

/// True when the offset takes no digits from the values. Whole numbers beside an offset are
/// stored exactly, so that the samples themselves decide where their size does not.
bool offset_is_harmless(const channel_scaling& channel, double general, double largest) {
    const auto divisor = double{channel.scale} * general;
    const auto stored = largest / std::abs(divisor);
    const auto offset = std::abs(channel.offset);
    return (offset <= harmless_offset * stored && stored + offset <= double{float_limits::max()}) ||
           samples_survive(channel, divisor, tolerance * largest);
}

void fit_range(channel_scaling& channel, const std::string& label, double general, double largest,
               schema::warnings& notes) {
    const auto stored = largest / std::abs(double{channel.scale} * general);
    const bool too_large = stored > double{float_limits::max()};
    const bool too_small = largest > 0.0 && stored < double{float_limits::min()};
    if (!too_large && !too_small)
        return;
    const auto scale = static_cast<float>(largest / wanted_range / general);
    if (!is_scale(double{scale}))
        return; // values that no scale brings into range become infinite, or 0
    notes.add("the analog channel '{}' has values up to {}, too {} for its scale {}; it is "
              "written with the scale {}",
              label, largest, too_large ? "large" : "small", channel.scale, scale);
    channel.scale = scale;
}

/// What the numbers are that integers would hold.
struct word_survey {
    bool all_fit = true;
    bool all_whole = true; ///< but for what rounding to singles takes off
};

word_survey survey_words(const channel_scaling& channel, double general) {
    constexpr double rounding = 4.0 * float_limits::epsilon();
    // Beside an offset above 0, readers take words for such without a sign where they have to.
    const double highest = channel.offset > 0.0 ? 65535.0 : 32767.0;
    word_survey found;
    for_singles(channel.source(general), channel.buffer.count(),
                [&](std::size_t, std::span<const float> singles) {
                    for (const double single : singles) {
                        const auto word = std::nearbyint(single);
                        const auto size = std::max(std::abs(word), std::abs(channel.offset));
                        found.all_fit = found.all_fit && word >= -32768.0 && word <= highest;
                        found.all_whole =
                            found.all_whole && std::abs(single - word) <= rounding * size;
                    }
                });
    return found;
}

} // namespace

bool is_scale(double scale) noexcept { return scale != 0.0 && std::isfinite(scale); }

bool channel_scaling::is_as_read(double general) const noexcept {
    return buffer.stored() == strata::data_type::float32 && buffer.offset() == offset &&
           buffer.factor() == double{scale} * general;
}

sample_source channel_scaling::source(double general) const {
    const auto divisor = double{scale} * general;
    // Values that are all 0 need no scale.
    return {buffer, divisor == 0.0 && !is_as_read(general) ? 1.0 : divisor, offset};
}

std::vector<float> channel_scaling::stored_samples(double general) const {
    const auto count = static_cast<std::size_t>(buffer.count());
    std::vector<float> scratch(count);
    const auto* samples = source(general).singles(0, count, scratch.data());
    if (samples != scratch.data())
        std::copy_n(samples, count, scratch.begin());
    return scratch;
}

void make_readable(channel_scaling& channel, const std::string& label, double general,
                   schema::warnings& notes) {
    const auto largest = largest_value(channel.buffer);
    if (channel.was_zero && channel.scale == 0.0F && largest == 0.0)
        return;
    if (!is_scale(double{channel.scale})) {
        notes.add("the scale of the analog channel '{}' is {}; it is written as 1", label,
                  channel.scale);
        channel.scale = 1.0F;
    }
    fit_range(channel, label, general, largest, notes);
    if (channel.offset == 0.0 || offset_is_harmless(channel, general, largest))
        return;
    notes.add("the offset {} of the analog channel '{}' leaves its values, up to {}, too few "
              "digits; it is written as 0",
              channel.offset, label, largest);
    channel.offset = 0.0;
}

void make_fine(channel_scaling& channel, const std::string& label, double general,
               schema::warnings& notes) {
    const auto found = survey_words(channel, general);
    if (found.all_whole || !found.all_fit)
        return;
    const auto largest = largest_value(channel.buffer);
    const auto scale = static_cast<float>(largest / wanted_range / std::abs(general));
    if (!is_scale(double{scale}) || scale >= std::abs(channel.scale))
        return;
    notes.add("integers would round the analog channel '{}', with its scale {}, in steps of {}; it "
              "is written with the scale {}",
              label, channel.scale, std::abs(double{channel.scale} * general), scale);
    channel.scale = scale;
    channel.offset = 0.0;
}

} // namespace c3d
