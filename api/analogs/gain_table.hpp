#pragma once

namespace mox {

/// Highest gain code.
inline constexpr int last_gain_code = 5;

/// Gain value of a gain code from 0 to last_gain_code; throws std::out_of_range "invalid map<K, T>
/// key" for any other.
[[nodiscard]] double gain_value(int code);

} // namespace mox
