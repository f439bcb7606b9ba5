#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace schema {

/// Whether `text` can be a component of a path: not empty, without "/" and "\".
[[nodiscard]] bool is_path_component(std::string_view text) noexcept;

/// `text` as a component of a path: "/" and "\" replaced by "_".
[[nodiscard]] std::string path_component(std::string_view text);

/// What things without a name are called. Kept: spelt with one n.
inline constexpr char unnamed[] = "unamed";

/// The name of a channel without a label: "unamed_" and its index.
[[nodiscard]] std::string unnamed_channel(std::int64_t index);

/// A distinct name for each channel that can stand in a path. A name is its label wherever that is
/// possible; of channels that share one, the first keeps it and the others get "_2", "_3" and so
/// on; one without a label is an unnamed_channel.
[[nodiscard]] std::vector<std::string> distinct_names(const std::vector<std::string>& labels);

} // namespace schema
