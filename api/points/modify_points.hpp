#pragma once

// Changes of points. Every check comes before the first change: a refused call leaves the
// acquisition as it was.

#include "store/python.hpp"

#include <string>

#include <strata/data_store.hpp>

#include "store/outputs.hpp"

namespace mox::points {

/// A new point of the type `type_word` with the values of `matrix`, frames × 3.
[[nodiscard]] outputs<2> append(strata::data_store acquisition, const std::string& type_word,
                                const std::string& label, PyObject* matrix);

/// Deletes a point; every greater index moves down.
[[nodiscard]] outputs<2> remove_by_index(strata::data_store acquisition, int index);
[[nodiscard]] outputs<2> remove_by_label(strata::data_store acquisition, const std::string& label);

/// Deletes every point, group by group; stops at the first group that is missing.
void clear(strata::data_store acquisition);

[[nodiscard]] outputs<2> set_label_by_index(strata::data_store acquisition, int index,
                                            const std::string& label);
[[nodiscard]] outputs<2> set_label_by_label(strata::data_store acquisition,
                                            const std::string& point, const std::string& label);

[[nodiscard]] outputs<2> set_description_by_index(strata::data_store acquisition, int index,
                                                  const std::string& text);
[[nodiscard]] outputs<2> set_description_by_label(strata::data_store acquisition,
                                                  const std::string& point,
                                                  const std::string& text);

/// Moves a point, name, values and attributes kept, into the group of another type.
[[nodiscard]] outputs<2> set_type_by_index(strata::data_store acquisition, int index,
                                           const std::string& type_word);
[[nodiscard]] outputs<2> set_type_by_label(strata::data_store acquisition, const std::string& point,
                                           const std::string& type_word);

/// Sets the unit of every point of a type.
void set_unit(strata::data_store acquisition, const std::string& type_word,
              const std::string& unit);

/// Adds markers until there are `wanted` points; with fewer wanted than there are, shrink_channels
/// decides what stays.
[[nodiscard]] outputs<2> set_number(strata::data_store acquisition, int wanted);

} // namespace mox::points
