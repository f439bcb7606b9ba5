#pragma once

#include "store/python.hpp"

#include <string_view>

#include <strata/data_set.hpp>

namespace mox {

/// Stores `value` under `key`; throws python_error.
void set_item(PyObject* dictionary, std::string_view key, const py_ref& value);
void set_item(PyObject* dictionary, const char* key, const py_ref& value);

/// The attribute of a set as Python (squeezed); SystemError that names set and attribute when the
/// set lacks it.
[[nodiscard]] py_ref required_attribute(const strata::data_set& set, const char* attribute);

/// Reads an attribute of a set as Python (squeezed) and stores it under the attribute's name.
void set_item_from_attribute(PyObject* dictionary, const strata::data_set& set,
                             const char* attribute);

/// Stores `value` under `key` in its normal form: bytes become str, an int beyond 32 bits becomes
/// −1, a float is narrowed to single precision, an array is shared, a list becomes a new list;
/// anything else stays as it is.
void set_item_from_value(PyObject* dictionary, std::string_view key, PyObject* value);

} // namespace mox
