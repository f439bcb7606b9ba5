#pragma once

#include <string_view>
#include <vector>

#include <strata/data_group.hpp>
#include <strata/data_set.hpp>

namespace acquisition_layout {

/// Where the sets of the analog channels lie, from the root of an acquisition.
inline constexpr std::string_view analogs_export_path = "Format/Data/AnalogsExport";

/// The set of each analog column that the parameters speak of: element n belongs to the n-th entry
/// of ANALOG:LABELS (LABELS2, LABELS3 … continue it), which is what a channel number n + 1 in other
/// parameters means. An entry that no set belongs to has a handle that denotes nothing; no set
/// belongs to two entries.
///
/// An entry's set is the one with the name that reading a file gives this column, so it stays the
/// same when a channel's label is edited. Where that set is gone, it is the first remaining one
/// whose `Label` is the entry's text. A column that was read without a text counts as an empty
/// entry.
///
/// Without LABELS the columns are the sets in ascending `RelativeSetIndex`; those of a file keep
/// their columns when channels before them are removed.
///
/// `root`: the acquisition, whose parameters lie in `Format/Metadata/ANALOG`. `analogs_path`: the
/// group of the channels, from there; without it there are columns but no sets.
///
/// Nothing is changed. The cost is linear in channels and entries.
[[nodiscard]] std::vector<strata::data_set>
pair_analogs(const strata::data_group& root, std::string_view analogs_path = analogs_export_path);

/// The sets of a group in ascending `RelativeSetIndex`; sets of one index, and those without one,
/// which come last, in the store's order.
[[nodiscard]] std::vector<strata::data_set> sets_by_index(const strata::data_group& group);

} // namespace acquisition_layout
