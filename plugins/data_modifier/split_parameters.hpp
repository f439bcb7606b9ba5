#pragma once

#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include <anvil/json.hpp>

namespace data_modifier {

/// An array attribute of the source set, one element a channel, that becomes an attribute of each
/// channel's set.
struct attribute_split {
    std::string source;      ///< name of the array attribute
    std::string destination; ///< name that the channel's set receives its element under
};

/// What to split, and into what.
struct split_parameters {
    std::string source_set;        ///< path of the set with all channels
    std::string destination_group; ///< path of the group that receives a set for each channel
    /// Labels of the channels to take; every channel when absent.
    std::optional<std::unordered_set<std::string>> labels_filter;
    std::vector<attribute_split> attributes; ///< no two have the same destination
};

/// Throws split_error that names the member which is missing or of the wrong kind.
[[nodiscard]] split_parameters parse_split_parameters(const anvil::json& parameters);

} // namespace data_modifier
