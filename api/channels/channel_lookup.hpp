// What points and analog channels have in common.
//
// | file              |                                               |
// |-------------------|-----------------------------------------------|
// | channel_lookup    | the channel of an index or a label            |
// | channel_info      | what information dictionaries say of channels |
// | values_matrix     | the samples of all channels as a matrix       |
// | matrix_check      | a matrix that a script gives                  |
// | write_channels    | its values into channels                      |
// | channel_numbering | indices and names while channels come and go  |
// | remove_channels   | a channel leaves, with all that follows       |
// | channel_kinds     | the kinds of the object view                  |
// | channel_keys      | their keys, which are labels                  |
// | channel_handle    | one channel by its handle                     |
// | modify_channels   | adding channels to a kind, all its samples    |
// | unread_channels   | those of the file that nobody asked for       |

#pragma once

// Finding a channel by its index or its label. Points and analog channels are found alike.

#include <optional>
#include <string>

#include <strata/data_group.hpp>
#include <strata/data_set.hpp>

namespace mox {

/// The first set of `group`, in the store's order, whose `RelativeSetIndex` is `index`.
[[nodiscard]] std::optional<strata::data_set> find_set_by_index(const strata::data_group& group,
                                                                int index);

/// The first set of `group`, in the store's order, whose `Label` is `label`, compared byte for
/// byte.
[[nodiscard]] std::optional<strata::data_set> find_set_by_label(const strata::data_group& group,
                                                                const std::string& label);

/// As above; RuntimeError that quotes the index or label when there is no such channel.
[[nodiscard]] strata::data_set channel_by_index(const strata::data_group& group, int index);
[[nodiscard]] strata::data_set channel_by_label(const strata::data_group& group,
                                                const std::string& label);

/// Finds a point in the five point groups below `data`, in the order of their types, and stores the
/// group that holds it in `holder`. RuntimeError as for channels; also when one of the groups
/// searched is missing.
[[nodiscard]] strata::data_set point_by_index(const strata::data_group& data, int index,
                                              strata::data_group& holder);
[[nodiscard]] strata::data_set point_by_label(const strata::data_group& data,
                                              const std::string& label, strata::data_group& holder);

} // namespace mox
