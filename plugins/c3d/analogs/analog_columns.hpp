#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <strata/data_group.hpp>
#include <strata/data_set.hpp>

namespace c3d {

/// An analog channel that is going to be written.
struct analog_column {
    strata::data_set set;
    std::string label;
    std::string unit;
    std::string description;
    std::int32_t gain = 0;
    float scale = 1.0F;
    float offset = 0.0F;
    std::optional<std::size_t> column_read; ///< its column in the file that was read
};

/// The channels of the group `AnalogsExport` of `data` in ascending `RelativeSetIndex`.
[[nodiscard]] std::vector<analog_column> analog_columns(const strata::data_group& data);

} // namespace c3d
