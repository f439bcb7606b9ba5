#pragma once

#include <cstdint>
#include <string>

#include <strata/data_set.hpp>

namespace c3d {

/// The first text of an attribute; empty when there is none.
[[nodiscard]] std::string text_of(const strata::data_set& set, const char* attribute);

/// `Label` as a file can hold it: without padding. The set's name when it has none.
[[nodiscard]] std::string label_of(const strata::data_set& set);

/// `Unit`; empty where nobody has said it yet ("Unknown").
[[nodiscard]] std::string known_unit_of(const strata::data_set& set);

/// `RelativeSetIndex`; behind all others when there is none.
[[nodiscard]] std::int64_t relative_index_of(const strata::data_set& set);

} // namespace c3d
