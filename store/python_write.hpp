#pragma once

#include "store/python.hpp"

#include <string>

#include <strata/data_attribute.hpp>
#include <strata/data_group.hpp>
#include <strata/data_type.hpp>

namespace mox {

/// Element type for a metadata format name: "Integer", "Byte", "Char" or "Real". Throws
/// std::out_of_range "invalid map<K, T> key" for any other.
[[nodiscard]] strata::data_type type_of_format(const std::string& format);

/// Replaces the attribute's elements by `value` (number, text, nested list or array), given to the
/// store as elements of type `target`. Everything is taken from `value` before the store is
/// written. Elements are taken in logical order whatever an array's memory layout. A count that
/// differs from the attribute's is logged and nothing written. SystemError or what a Python
/// conversion raises when `value` cannot be taken; ValueError for a ragged list; OverflowError for
/// an integer that the attribute cannot hold (store/integer_range.hpp).
void write_python_value(strata::data_attribute attribute, strata::data_type target,
                        PyObject* value);

/// Creates the attribute `name` of `group`, of the element type that `format` names and of the
/// value's shape, and writes `value` into it. The group has no attribute of that name. After a
/// failure it has none.
void write_python_value_as_new(strata::data_group group, const std::string& name,
                               const std::string& format, PyObject* value);

} // namespace mox
