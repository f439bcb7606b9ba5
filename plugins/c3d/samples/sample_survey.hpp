#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <span>

#include "plugins/c3d/samples/sample_source.hpp"

namespace c3d {

/// What the singles of a source are like.
struct sample_survey {
    float lowest = std::numeric_limits<float>::infinity();   ///< of those that are finite
    float highest = -std::numeric_limits<float>::infinity(); ///< lower when none is
    bool all_finite = true;
    bool any_infinite = false;
    bool all_whole = true; ///< integers, but for what rounding to singles takes off
};

/// Looks at the first `count` singles.
[[nodiscard]] sample_survey survey(const sample_source& source, std::uint64_t count);

/// Calls `use` with the index of the first and the singles themselves, block by block.
void for_singles(const sample_source& source, std::uint64_t count,
                 const std::function<void(std::size_t, std::span<const float>)>& use);

} // namespace c3d
