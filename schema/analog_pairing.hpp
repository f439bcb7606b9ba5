#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include <strata/data_group.hpp>
#include <strata/data_set.hpp>

#include "schema/names.hpp"

namespace schema {

/// The set of each analog column that the parameters speak of: element n belongs to the n-th entry
/// of ANALOG:LABELS (LABELS2, LABELS3 … continue it), which is what a channel number n + 1 in other
/// parameters means. An entry that no set belongs to has a handle that denotes nothing; no set
/// belongs to two entries.
///
/// An entry's set is the one with the name that reading a file gives this column, so it stays the
/// same when a channel's label is edited. Where that set is gone, it is the first remaining one
/// whose `Label` is the entry's text; where there is none either, the one that the column of the
/// file became, so that it stays the same when the entry is edited. A column that was read without
/// a text counts as an empty entry.
///
/// Without LABELS the columns are those of the file, which they keep when channels before them are
/// removed. In both cases the channels that no column has follow, in ascending `RelativeSetIndex`,
/// also behind the columns of the file that were not read (partial_reading.hpp).
///
/// `root`: the acquisition, whose parameters lie in `Format/Metadata/ANALOG`. `analogs_path`: the
/// group of the channels, from there; without it there are columns but no sets.
///
/// Nothing is changed. The cost is linear in channels and entries.
[[nodiscard]] std::vector<strata::data_set>
pair_analogs(const strata::data_group& root, std::string_view analogs_path = analogs_export);

/// The first columns of pair_analogs, those of LABELS or of the file: they keep their numbers
/// whatever becomes of the channels.
[[nodiscard]] std::size_t known_analog_columns(const strata::data_group& root);

/// The sets of a group in ascending `RelativeSetIndex`; sets of one index, and those without one,
/// which come last, in the store's order.
[[nodiscard]] std::vector<strata::data_set> sets_by_index(const strata::data_group& group);

} // namespace schema
