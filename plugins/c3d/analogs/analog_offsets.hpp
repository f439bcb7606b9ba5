#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "plugins/c3d/parameters/parameter_table.hpp"
#include "plugins/c3d/samples/decoder.hpp"

namespace c3d {

/// What ANALOG:FORMAT says; nothing when it is missing or says neither.
[[nodiscard]] std::optional<word_sign> declared_sign(const parameter_table& parameters);

/// What is known about how one file holds analog numbers.
struct analog_encoding {
    sample_storage storage = sample_storage::real;
    std::optional<word_sign> declared; ///< as above
    bool may_have_16_bits = true;      ///< ANALOG:BITS does not say less
};

/// As ANALOG says, in a file of that storage.
[[nodiscard]] analog_encoding analog_encoding_of(const parameter_table& parameters,
                                                 sample_storage storage);

/// How the offset word of a channel is meant.
struct offset_reading {
    double offset = 0.0;
    bool unsigned_samples = false; ///< integer samples were decoded with a sign, but have none
};

/// Reads an offset word. The word alone cannot tell 32,768 from −32,768, and ANALOG:FORMAT is
/// missing or wrong in many files, so the samples, as decoded, are looked at: an offset lies among
/// them.
[[nodiscard]] offset_reading read_offset(std::int16_t word, const analog_encoding& encoding,
                                         std::span<const float> samples);

} // namespace c3d
