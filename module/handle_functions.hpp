#pragma once

// The Python functions that act on handles as such, and the conversions between Python and JSON.

#include "store/python.hpp"

#include <anvil/json.hpp>
#include <strata/data_store.hpp>

#include "module/parameter.hpp"

namespace mox::handles {

/// `function` as an instance method, for shadow classes.
[[nodiscard]] py_ref instance_method(PyObject* function);

/// A new, empty store.
[[nodiscard]] strata::data_store new_store();

/// Destroys the store at once; the handle no longer denotes one.
void delete_store(store_pointer handle);

void register_shadow(PyObject* shadow_class);
void initialise_shadow_instance(PyObject* instance, PyObject* handle);

/// Always throws "Unsupported data type: '<type>'".
py_ref throw_type_error(PyObject* value);

[[nodiscard]] py_ref metadata_from_data_set(const_data_set set);
[[nodiscard]] py_ref from_json(const_json value);
[[nodiscard]] anvil::json to_json(PyObject* value);

} // namespace mox::handles
