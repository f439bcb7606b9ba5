#include "plugins/c3d/samples/sample_survey.hpp"

#include <algorithm>
#include <cmath>
#include <vector>

namespace c3d {

namespace {

/// More than 65,535 is off for being a single.
constexpr float whole_tolerance = 1.0F / 128.0F;

} // namespace

void for_singles(const sample_source& source, std::uint64_t count,
                 const std::function<void(std::size_t, std::span<const float>)>& use) {
    constexpr std::size_t block = 4096;
    std::vector<float> scratch(block);
    for (std::uint64_t done = 0; done < count; done += block) {
        const auto first = static_cast<std::size_t>(done);
        const auto size = static_cast<std::size_t>(std::min<std::uint64_t>(block, count - done));
        use(first, {source.singles(first, size, scratch.data()), size});
    }
}

sample_survey survey(const sample_source& source, std::uint64_t count) {
    sample_survey result;
    for_singles(source, count, [&](std::size_t, std::span<const float> singles) {
        for (auto single : singles) {
            if (!std::isfinite(single)) {
                result.all_finite = false;
                result.any_infinite = result.any_infinite || std::isinf(single);
                continue;
            }
            result.lowest = std::min(result.lowest, single);
            result.highest = std::max(result.highest, single);
            const bool is_whole = std::abs(single - std::nearbyint(single)) <= whole_tolerance;
            result.all_whole = result.all_whole && is_whole;
        }
    });
    return result;
}

} // namespace c3d
