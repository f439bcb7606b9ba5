// This folder converts between Python and the data store (<strata/...>): values, paths, failures.
// Nothing here knows what an acquisition is.
//
// | file                |                                                                     |
// |---------------------|---------------------------------------------------------------------|
// | python              | the one place where Python and NumPy enter                          |
// | borrowed_bytes      | the bytes of an object, for as long as it is held                   |
// | interpreter_release | lets other threads run                                              |
// | swig_error          | failures that become a Python exception                             |
// | outputs             | several results of one function                                     |
// | nesting             | how deep containers of Python may lie in each other                 |
// | path_helpers        | groups, sets and attributes at a path, or the failure that names it |
// | store_log           | failures that are a line in the log                                 |
// | numpy_types         | element types of NumPy and of the data store                        |
// | integer_range       | integers that are beyond a type                                     |
// | unreadable_scalar   | types of which a single value has no Python form                    |
// | python_read         | a stored value as a Python one                                      |
// | list_elements       | the items of nested lists, in order                                 |
// | python_write        | a Python value into an attribute                                    |
// | frozen_lists        | lists that nobody changes meanwhile                                 |
// | matrix_writer       | matrices of doubles into sets                                       |
// | typed_access        | a stored value as a C++ one, and back                               |
// | append_element      | one element more                                                    |
// | element_conversion  | a number or a text as another type                                  |
// | attribute_rebuild   | an attribute with another extent or type                            |
// | dimension_list      | extents that a script gives                                         |
// | dictionary          | dictionaries of results                                             |
// | json_conversion     | dictionaries as JSON, and back                                      |

#pragma once

// The one place where Python and NumPy enter. Included before everything else.

#define PY_SSIZE_T_CLEAN
#include <Python.h>

// One table of NumPy's functions for the whole module; only the file that binds it defines it.
#define PY_ARRAY_UNIQUE_SYMBOL mox_numpy_api
#ifndef MOX_BINDS_NUMPY
#define NO_IMPORT_ARRAY
#endif
#include <numpy/arrayobject.h>

#include <utility>

namespace mox {

/// Thrown while a Python exception is pending: the call ends and Python raises that exception.
struct python_error {};

/// After a Python call that failed: forgets its exception where that is an answer of the object
/// that was asked. An interrupt, the end of the process or a lack of memory stays pending.
inline void forget_answer() noexcept {
    if (PyErr_ExceptionMatches(PyExc_Exception) != 0 &&
        PyErr_ExceptionMatches(PyExc_MemoryError) == 0)
        PyErr_Clear();
}

/// Owns one reference to a Python object, or none.
class py_ref {
  public:
    py_ref() noexcept = default;
    /// Takes over a reference that the caller owns; null gives an empty one.
    [[nodiscard]] static py_ref steal(PyObject* object) noexcept { return py_ref(object); }
    /// Adds a reference of its own.
    [[nodiscard]] static py_ref borrow(PyObject* object) noexcept {
        return py_ref(Py_XNewRef(object));
    }
    /// Takes over the result of a Python call; throws python_error when the call failed.
    [[nodiscard]] static py_ref checked(PyObject* object) {
        if (!object)
            throw python_error{};
        return py_ref(object);
    }
    [[nodiscard]] static py_ref none() noexcept { return borrow(Py_None); }

    py_ref(const py_ref& other) noexcept : object_(Py_XNewRef(other.object_)) {}
    py_ref(py_ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    py_ref& operator=(py_ref other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~py_ref() { Py_XDECREF(object_); }

    [[nodiscard]] PyObject* get() const noexcept { return object_; }
    /// Gives the reference to the caller.
    [[nodiscard]] PyObject* release() noexcept { return std::exchange(object_, nullptr); }
    explicit operator bool() const noexcept { return object_ != nullptr; }
    [[nodiscard]] PyArrayObject* array() const noexcept {
        return reinterpret_cast<PyArrayObject*>(object_);
    }

  private:
    explicit py_ref(PyObject* object) noexcept : object_(object) {}
    PyObject* object_ = nullptr;
};

} // namespace mox
