#include "plugins/c3d/analogs/analog_offsets.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace c3d {

namespace {

/// Offsets of amplifiers whose zero is off by a little; none of an unsigned converter is anywhere
/// near.
constexpr double least_small_offset = -4096.0;

/// Around the middle of an unsigned 16-bit range, whose word reads −32,768; no signed converter has
/// its zero at the end of its range.
constexpr double most_middle_word = -28672.0;

/// The mean of some samples all over the channel.
double level_of(std::span<const float> samples) {
    constexpr std::size_t wanted = 1024;
    const auto step = std::max<std::size_t>(samples.size() / wanted, 1);
    double sum = 0.0;
    double count = 0.0;
    for (std::size_t i = 0; i < samples.size(); i += step) {
        if (!std::isfinite(samples[i]))
            continue;
        sum += double{samples[i]};
        count += 1.0;
    }
    return count > 0.0 ? sum / count : 0.0;
}

/// True when the samples leave no doubt between the two, which are 65,536 apart: a signal reaches
/// far from its zero, but not all the time.
bool clearly_nearer(double level, double candidate, double other) {
    return std::abs(level - candidate) * 8.0 < std::abs(level - other);
}

} // namespace

std::optional<word_sign> declared_sign(const parameter_table& parameters) {
    const auto format = upper_case(parameters.text("ANALOG", "FORMAT"));
    if (format.find("UNSIGNED") != std::string::npos)
        return word_sign::without;
    if (format.find("SIGNED") != std::string::npos)
        return word_sign::with;
    return std::nullopt;
}

analog_encoding analog_encoding_of(const parameter_table& parameters, sample_storage storage) {
    const auto bits = parameters.count("ANALOG", "BITS");
    return {storage, declared_sign(parameters), !bits || *bits == 0 || *bits >= 16};
}

offset_reading read_offset(std::int16_t word, const analog_encoding& encoding,
                           std::span<const float> samples) {
    const double as_signed = word;
    if (word >= 0)
        return {as_signed, false};
    const double as_unsigned = as_signed + 65536.0;

    if (encoding.declared == word_sign::without) {
        // Some writers declare UNSIGNED and yet store the small negative zeros of amplifiers.
        const bool small = as_signed >= least_small_offset &&
                           clearly_nearer(level_of(samples), as_signed, as_unsigned);
        return {small ? as_signed : as_unsigned, false};
    }
    if (encoding.storage == sample_storage::integer) {
        // The samples have been read with a sign and cannot tell. Files that are older than FORMAT
        // hold unsigned words of 16 bits all the same, with the zero in the middle of their range.
        const bool middle =
            !encoding.declared && encoding.may_have_16_bits && as_signed <= most_middle_word;
        return {middle ? as_unsigned : as_signed, middle};
    }
    // Reals carry their sign themselves, so they outdo even a FORMAT that says SIGNED.
    const bool middle = !encoding.declared && word == -32768;
    if (middle || clearly_nearer(level_of(samples), as_unsigned, as_signed))
        return {as_unsigned, false};
    return {as_signed, false};
}

} // namespace c3d
