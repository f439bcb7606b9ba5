#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "plugins/c3d/parameters/channel_entries.hpp"
#include "plugins/c3d/parameters/parameter_tree.hpp"
#include "plugins/c3d/parameters/parameter_values.hpp"

namespace c3d {

/// What becomes of a list with more or fewer entries than channels. Files may have such, and keep
/// them while channels are neither added nor removed.
enum class surplus { kept, dropped };

/// True when a list has an entry for each channel, or may keep what it has.
[[nodiscard]] bool may_stay(const channel_entries& entries, std::size_t channels,
                            surplus rule) noexcept;

/// One text member of each column.
template <typename Columns, typename Member>
[[nodiscard]] std::vector<std::string> texts_of_columns(const Columns& columns, Member member) {
    std::vector<std::string> texts;
    texts.reserve(columns.size());
    for (const auto& column : columns)
        texts.push_back(column.*member);
    return texts;
}

/// Makes the list at `place` hold a text for each channel. It stays as it is when a reader would
/// already take these from it. A list that does not exist is not made for no channels.
void put_entries(parameter_tree& tree, parameter_place place, const std::vector<std::string>& texts,
                 std::size_t least_width, surplus rule,
                 single_value single = single_value::of_first_channel);

} // namespace c3d
