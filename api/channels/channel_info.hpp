#pragma once

// What the information dictionaries of points, analog channels and events have in common.

#include "store/python.hpp"

#include <string>
#include <string_view>
#include <vector>

#include <strata/data_set.hpp>

namespace mox {

/// A channel as the keys of the result dictionaries know it.
struct keyed_set {
    std::string key;
    strata::data_set set;
};

/// Each set under its name. A name that an earlier set of the list bears (two groups may share one)
/// is followed by "_2", "_3" …
[[nodiscard]] std::vector<keyed_set> keyed(std::vector<strata::data_set> sets);

/// Unit of a set as Python: its `Units` if it has that attribute, else its `Unit`; SystemError when
/// it has neither.
[[nodiscard]] py_ref unit_of(const strata::data_set& set);

/// {"ALL" + tag: unit} when all sets have one unit, where a set without unit counts as ""; else
/// each key with its unit. Empty without sets.
[[nodiscard]] py_ref units_of(const std::vector<keyed_set>& sets, std::string_view tag);

/// Each key with the named attribute of its set; SystemError when a set lacks it.
[[nodiscard]] py_ref attribute_of_each(const std::vector<keyed_set>& sets, const char* attribute);

} // namespace mox
