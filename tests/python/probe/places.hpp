#pragma once

// Places in a store as the tests name them: "" is the root group, or no attribute.

#include "store/python.hpp"

#include <string>

#include <strata/data_attribute.hpp>
#include <strata/data_group.hpp>
#include <strata/data_selection.hpp>
#include <strata/data_set.hpp>
#include <strata/data_shape.hpp>
#include <strata/data_store.hpp>

namespace mox::probe {

[[nodiscard]] strata::data_group group_at(const strata::data_store& store, const std::string& path);
[[nodiscard]] strata::data_set set_at(const strata::data_store& store, const std::string& path);

/// The attribute `name` of the set or the group at `path`; denotes nothing when there is none.
[[nodiscard]] strata::data_attribute attribute_at(const strata::data_store& store,
                                                  const std::string& path, const std::string& name);

/// The whole set for None, else the box that the list of coordinates describes.
[[nodiscard]] strata::data_selection selection_at(const strata::data_store& store,
                                                  const std::string& path, PyObject* coordinates);

/// A single value for None, else the dimensions of the list.
[[nodiscard]] strata::data_shape shape_from(PyObject* dimensions);

[[nodiscard]] std::vector<std::int64_t> integers_from(PyObject* list);

} // namespace mox::probe
