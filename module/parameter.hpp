#pragma once

// One declared parameter type of an implementation function: how messages spell it, whether a
// Python value fits, how it is converted.

#include "store/python.hpp"

#include <string>
#include <string_view>

#include <anvil/json.hpp>
#include <strata/data_set.hpp>
#include <strata/data_store.hpp>

#include "module/wrapped.hpp"

namespace mox {

/// What the messages of a call say of the function.
struct call_site {
    const char* function;              ///< Python name
    const char* closed_text = nullptr; ///< that of a deleted object, where it is not the usual one
};

/// Where an argument stands in a call, for messages.
struct argument_place {
    call_site site;
    int position;     ///< from 1, counting outputs
    const char* type; ///< declared type
};

/// Raises `exception` with "in method '<function>', argument <position> of type '<type>'".
[[noreturn]] void raise_argument_error(PyObject* exception, const argument_place& place);
/// Raises ValueError with "invalid null reference " before that, or with the site's own text.
[[noreturn]] void raise_null_reference(const argument_place& place);

namespace conversion {
[[nodiscard]] bool fits_int(PyObject* value) noexcept;
[[nodiscard]] bool fits_double(PyObject* value) noexcept;
[[nodiscard]] bool fits_float(PyObject* value) noexcept;
[[nodiscard]] int to_int(PyObject* value, const argument_place& place);
[[nodiscard]] double to_double(PyObject* value, const argument_place& place);
[[nodiscard]] float to_float(PyObject* value, const argument_place& place);
[[nodiscard]] std::string to_text(PyObject* value, const argument_place& place);
/// The proxy of `kind` that `value` is or holds; TypeError for anything else, None among it,
/// ValueError for one whose object was deleted.
[[nodiscard]] py_ref to_proxy(PyObject* value, const proxy_kind& kind, const argument_place& place);
/// The same for a handle of an acquisition, for which None is a null reference: ValueError.
[[nodiscard]] py_ref to_handle(PyObject* value, const argument_place& place);
/// False with an exception pending when looking for the proxy raised one that must not be
/// swallowed: an interrupt, a lack of memory.
[[nodiscard]] bool fits_proxy(PyObject* value, const proxy_kind& kind) noexcept;
} // namespace conversion

/// `type` is what the conversion gives and the implementation takes. No check leaves an exception
/// pending but fits_proxy.
template <typename Declared> struct parameter;

template <> struct parameter<int> {
    static constexpr const char* spelling = "int";
    static bool fits(PyObject* value) noexcept { return conversion::fits_int(value); }
    static int convert(PyObject* value, const argument_place& place) {
        return conversion::to_int(value, place);
    }
};

template <> struct parameter<double> {
    static constexpr const char* spelling = "double";
    static bool fits(PyObject* value) noexcept { return conversion::fits_double(value); }
    static double convert(PyObject* value, const argument_place& place) {
        return conversion::to_double(value, place);
    }
};

template <> struct parameter<const double&> : parameter<double> {
    static constexpr const char* spelling = "double const &";
};

template <> struct parameter<float> {
    static constexpr const char* spelling = "float";
    static bool fits(PyObject* value) noexcept { return conversion::fits_float(value); }
    static float convert(PyObject* value, const argument_place& place) {
        return conversion::to_float(value, place);
    }
};

template <> struct parameter<const std::string&> {
    static constexpr const char* spelling = "std::string const &";
    static bool fits(PyObject* value) noexcept { return PyUnicode_Check(value); }
    static std::string convert(PyObject* value, const argument_place& place) {
        return conversion::to_text(value, place);
    }
};

template <> struct parameter<std::string&> : parameter<const std::string&> {
    static constexpr const char* spelling = "std::string &";
};

template <> struct parameter<PyObject*> {
    static constexpr const char* spelling = "PyObject *";
    static bool fits(PyObject* /*value*/) noexcept { return true; }
    static PyObject* convert(PyObject* value, const argument_place& /*place*/) noexcept {
        return value;
    }
};

/// A copy of what a proxy wraps.
template <typename Wrapped> struct wrapped_parameter {
    static bool fits(PyObject* value) noexcept {
        return conversion::fits_proxy(value, kind_of<Wrapped>);
    }
    static Wrapped convert(PyObject* value, const argument_place& place) {
        return copy_of(conversion::to_proxy(value, kind_of<Wrapped>, place));
    }

  protected:
    static Wrapped copy_of(const py_ref& proxy) {
        return *static_cast<Wrapped*>(as_proxy(proxy)->wrapped);
    }
};

template <> struct parameter<strata::data_store> : wrapped_parameter<strata::data_store> {
    static constexpr const char* spelling = "strata::data_store";
    static strata::data_store convert(PyObject* value, const argument_place& place) {
        return copy_of(conversion::to_handle(value, place));
    }
};

template <> struct parameter<strata::data_set> : wrapped_parameter<strata::data_set> {
    static constexpr const char* spelling = "strata::data_set";
};

// A parameter declared const by value keeps its own type only in a class of its own: functions do
// not tell `T` from `T const`.
/// Stands for `strata::data_set const`.
struct const_data_set {
    strata::data_set value;
};
template <> struct parameter<const_data_set> : wrapped_parameter<strata::data_set> {
    static constexpr const char* spelling = "strata::data_set const";
    static const_data_set convert(PyObject* value, const argument_place& place) {
        return {wrapped_parameter<strata::data_set>::convert(value, place)};
    }
};

/// Stands for `anvil::json const`.
struct const_json {
    anvil::json value;
};
template <> struct parameter<const_json> : wrapped_parameter<anvil::json> {
    static constexpr const char* spelling = "anvil::json const";
    static const_json convert(PyObject* value, const argument_place& place) {
        return {wrapped_parameter<anvil::json>::convert(value, place)};
    }
};

/// Stands for `strata::data_store *`: the proxy itself, which the function may empty.
struct store_pointer {
    py_ref proxy;
};
template <> struct parameter<store_pointer> {
    static constexpr const char* spelling = "strata::data_store *";
    static bool fits(PyObject* value) noexcept {
        return conversion::fits_proxy(value, kind_of<strata::data_store>);
    }
    static store_pointer convert(PyObject* value, const argument_place& place) {
        return {conversion::to_handle(value, place)};
    }
};

} // namespace mox
