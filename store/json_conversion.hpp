#pragma once

#include "store/python.hpp"

#include <anvil/json.hpp>

namespace mox {

/// "Unsupported data type: '<type name>'": TypeError.
[[noreturn]] void throw_unsupported_type(PyObject* value);

/// A Python value (dict, list, bool, str, float, int, None, nested) as JSON. TypeError for any
/// other value or key; Python OverflowError for an int beyond 32 bits, RecursionError for values
/// nested too deeply.
[[nodiscard]] anvil::json python_to_json(PyObject* value);

/// A JSON value as Python: dict, list, str, int, float, bool or None.
[[nodiscard]] py_ref json_to_python(const anvil::json& value);

} // namespace mox
