#pragma once

#include <cstdint>

#include <strata/data_set.hpp>

namespace schema {

// A raw set (`Format/Data/Points`, `Format/Data/Analogs`) keeps how many of its channels became
// sets of their own when its file was read. Scripts do not see the others, and what is written
// lacks them. Channels that a script removed afterwards are none of these.

/// Number of channels that a raw set holds; 0 for a handle that denotes nothing.
[[nodiscard]] std::uint64_t raw_channels(const strata::data_set& raw);

/// Keeps on `raw` that `count` of its channels became sets of their own.
void record_split(strata::data_set raw, std::uint64_t count);

/// Number of channels of `raw` that did not become sets of their own: all of them where nothing was
/// kept.
[[nodiscard]] std::uint64_t unsplit_channels(const strata::data_set& raw);

} // namespace schema
