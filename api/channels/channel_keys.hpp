#pragma once

// The keys of the object view's mappings: the labels, made unique where one is there more than
// once.

#include "store/python.hpp"

#include <optional>
#include <string>
#include <vector>

#include <strata/data_set.hpp>
#include <strata/data_store.hpp>

namespace mox::channels {

/// The keys of a kind's channels as a list, in ascending index; channels without index come last.
/// A channel without label has its name in the store for one. The first channel of a label has the
/// label for its key; each other one has label + "_2" or the next number that is no label.
[[nodiscard]] py_ref keys(strata::data_store acquisition, const std::string& kind);

/// The channel of a key; nothing when there is none.
[[nodiscard]] std::optional<strata::data_set> find(strata::data_store acquisition,
                                                   const std::string& kind, const std::string& key);

/// The keys of channels with these labels, in their order.
[[nodiscard]] std::vector<std::string> distinct_keys(std::vector<std::string> labels);

} // namespace mox::channels
