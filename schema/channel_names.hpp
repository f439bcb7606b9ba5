#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace schema {

/// `text` as a component of a path: "/" and "\" replaced by "_".
[[nodiscard]] std::string path_component(std::string_view text);

/// A distinct name for each channel that can stand in a path. A name is its label wherever that is
/// possible; of channels that share one, the first keeps it and the others get "_2", "_3" and so
/// on; one without a label is "unamed_" and its index.
[[nodiscard]] std::vector<std::string> distinct_names(const std::vector<std::string>& labels);

} // namespace schema
