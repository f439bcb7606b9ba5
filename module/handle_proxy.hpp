#pragma once

#include "store/python.hpp"

#include <memory>

namespace mox {

/// What a proxy wraps: the name that messages and repr() show, and how to destroy it.
struct proxy_kind {
    const char* name;               ///< "strata::data_store *"
    void (*destroy)(void* wrapped); ///< deletes what a proxy of this kind owns
};

/// A Python object that wraps a pointer to a C++ object.
struct proxy_object {
    PyObject_HEAD void* wrapped; ///< null once the object was deleted
    const proxy_kind* kind;      ///< never null
    bool owns;                   ///< the wrapped object is destroyed with the proxy
    PyObject* next;              ///< the proxy appended to this one, or null
};

/// The Python type of all proxies, made ready by ready_proxy_type.
[[nodiscard]] PyTypeObject* proxy_type() noexcept;

/// Makes the type usable; may be called again. Throws python_error.
void ready_proxy_type();

/// Uses `type`, another module's proxy type of the same build, so that proxies pass between both
/// modules.
void share_proxy_type(PyTypeObject* type) noexcept;

/// A new proxy. Takes over `wrapped`, also when it throws python_error.
[[nodiscard]] py_ref new_proxy(void* wrapped, const proxy_kind& kind);

/// The proxy that `object` is, or that its attribute "this" leads to; empty when there is none. An
/// exception is pending then only if it must not be swallowed: an interrupt, a lack of memory.
[[nodiscard]] py_ref proxy_of(PyObject* object) noexcept;

[[nodiscard]] inline proxy_object* as_proxy(const py_ref& proxy) noexcept {
    return reinterpret_cast<proxy_object*>(proxy.get());
}

/// The attribute name "this", interned by ready_proxy_type.
[[nodiscard]] PyObject* this_name() noexcept;

} // namespace mox
