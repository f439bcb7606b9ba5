#pragma once

#include "store/python.hpp"

namespace mox {

/// Makes acquisition handles instances of `shadow` from now on; their attribute "this" holds the
/// proxy.
void register_shadow_class(PyObject* shadow);

/// `proxy` as Python receives it: itself, or inside a new instance of the shadow class, made
/// without calling its `__init__`.
[[nodiscard]] py_ref with_shadow(py_ref proxy);

/// Sets "this" of `instance` to the proxy that `handle` is or holds. TypeError when it is no
/// handle.
void initialise_shadow(PyObject* instance, PyObject* handle);

} // namespace mox
