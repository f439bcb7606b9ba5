#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <strata/data_group.hpp>
#include <strata/data_set.hpp>

namespace data_modifier {

/// The set with all channels.
struct split_source {
    strata::data_set set;
    std::uint64_t components = 0;
    std::uint64_t channels = 0;
    std::uint64_t samples = 0;
    std::vector<std::string> labels;    ///< of the channels; the set may label fewer than it has
    std::int64_t number_of_samples = 0; ///< as its attribute says, else as the shape does
    double sample_rate = 0.0;           ///< 0 when it has no such attribute, as has start_time_s
    double start_time_s = 0.0;
    std::vector<std::string> row_attributes; ///< numeric attributes with a row for each channel
};

/// Throws split_error when there is no such set, when its elements are no numbers with the
/// dimensions components, channels and samples, or when it has channels but no labels.
[[nodiscard]] split_source open_source(const strata::data_group& root, const std::string& path);

} // namespace data_modifier
