#pragma once

// Native types by name, and their values to and from Python.

#include "store/python.hpp"

#include <concepts>
#include <cstdint>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "store/python_read.hpp"
#include "store/swig_error.hpp"

namespace mox::probe {

template <typename Native> inline constexpr const char* native_name = "";
template <> inline constexpr const char* native_name<bool> = "bool";
template <> inline constexpr const char* native_name<std::int8_t> = "int8";
template <> inline constexpr const char* native_name<std::int16_t> = "int16";
template <> inline constexpr const char* native_name<std::int32_t> = "int32";
template <> inline constexpr const char* native_name<std::int64_t> = "int64";
template <> inline constexpr const char* native_name<std::uint64_t> = "uint64";
template <> inline constexpr const char* native_name<float> = "float";
template <> inline constexpr const char* native_name<double> = "double";
template <> inline constexpr const char* native_name<std::string> = "string";

/// Calls `action` with a value of that one of `Natives` which is called `name`.
template <typename... Natives, typename Action>
py_ref with_native(const std::string& name, Action&& action) {
    py_ref result;
    const bool known =
        ((name == native_name<Natives> && (result = action(Natives{}), true)) || ...);
    if (!known)
        throw_runtime_error(fmt::format("no accessor for the native type '{}'", name));
    return result;
}

template <typename Native> py_ref python_from(const Native& value) {
    if constexpr (std::same_as<Native, std::string>)
        return text_to_python(value);
    else if constexpr (std::same_as<Native, bool>)
        return py_ref::borrow(value ? Py_True : Py_False);
    else if constexpr (std::floating_point<Native>)
        return py_ref::checked(PyFloat_FromDouble(static_cast<double>(value)));
    else if constexpr (std::unsigned_integral<Native>)
        return py_ref::checked(PyLong_FromUnsignedLongLong(value));
    else
        return py_ref::checked(PyLong_FromLongLong(value));
}

template <typename Native> py_ref python_from(const std::vector<Native>& values) {
    auto list = py_ref::checked(PyList_New(0));
    for (const auto& value : values) {
        if (PyList_Append(list.get(), python_from(value).get()) < 0)
            throw python_error{};
    }
    return list;
}

template <typename Native> Native native_from(PyObject* value) {
    if constexpr (std::same_as<Native, std::string>) {
        const char* text = PyUnicode_AsUTF8(value);
        if (!text)
            throw python_error{};
        return text;
    } else {
        const double number = PyFloat_AsDouble(value);
        if (number == -1.0 && PyErr_Occurred())
            throw python_error{};
        return static_cast<Native>(number);
    }
}

template <typename Native> std::vector<Native> natives_from(PyObject* list) {
    const auto items = py_ref::checked(PySequence_Fast(list, "a list is expected"));
    std::vector<Native> values;
    for (Py_ssize_t i = 0; i < PySequence_Fast_GET_SIZE(items.get()); ++i)
        values.push_back(native_from<Native>(PySequence_Fast_GET_ITEM(items.get(), i)));
    return values;
}

} // namespace mox::probe
