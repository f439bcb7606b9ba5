#pragma once

// The entry RATE of a parameter group of the file, `Format/Metadata/POINT` or `.../ANALOG`.

#include <optional>

#include <strata/data_group.hpp>

namespace mox {

/// What the entry of the group at `path` tells: one finite positive number. Nothing without a
/// group, an entry or such a number; a text is a line in the log as well.
[[nodiscard]] std::optional<double> rate_told(const strata::data_group& root, const char* path);

/// Makes the entry of the group at `path` tell `rate`, as near as a real comes; nothing happens
/// without a group or an entry. An entry that cannot, being a text, a list, or of integers that
/// `rate` is none of, becomes one real.
void tell_rate(const strata::data_group& root, const char* path, double rate);

} // namespace mox
