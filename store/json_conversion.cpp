#include "store/python.hpp"

#include "store/json_conversion.hpp"

#include <string>

#include <fmt/format.h>

#include "store/dictionary.hpp"
#include "store/integer_range.hpp"
#include "store/nesting.hpp"
#include "store/python_read.hpp"
#include "store/swig_error.hpp"

namespace mox {

namespace {

constexpr char converting[] = "converting between Python and JSON";

std::string utf8_of(PyObject* text) {
    Py_ssize_t length = 0;
    const char* data = PyUnicode_AsUTF8AndSize(text, &length);
    if (!data)
        throw python_error{};
    return {data, static_cast<std::size_t>(length)};
}

anvil::json object_from(PyObject* dictionary) {
    auto object = anvil::json::object();
    PyObject* key = nullptr;
    PyObject* value = nullptr;
    Py_ssize_t position = 0;
    while (PyDict_Next(dictionary, &position, &key, &value)) {
        if (!PyUnicode_Check(key))
            throw_unsupported_type(key);
        object[utf8_of(key)] = python_to_json(value);
    }
    return object;
}

anvil::json array_from(PyObject* list) {
    auto array = anvil::json::array();
    for (Py_ssize_t i = 0; i < PyList_GET_SIZE(list); ++i)
        array.push_back(python_to_json(PyList_GET_ITEM(list, i)));
    return array;
}

} // namespace

void throw_unsupported_type(PyObject* value) {
    throw swig_error(error_code::type,
                     fmt::format("Unsupported data type: '{}'", Py_TYPE(value)->tp_name));
}

anvil::json python_to_json(PyObject* value) {
    const nesting level(converting);
    if (PyDict_Check(value))
        return object_from(value);
    if (PyList_Check(value))
        return array_from(value);
    if (PyBool_Check(value))
        return value == Py_True;
    if (PyUnicode_Check(value))
        return utf8_of(value);
    if (PyFloat_Check(value))
        return PyFloat_AS_DOUBLE(value);
    if (PyLong_Check(value))
        return c_long_of(value);
    if (value == Py_None)
        return nullptr;
    throw_unsupported_type(value);
}

py_ref json_to_python(const anvil::json& value) {
    const nesting level(converting);
    switch (value.type()) {
    case anvil::json::value_t::object: {
        auto dictionary = py_ref::checked(PyDict_New());
        for (const auto& [key, member] : value.items())
            set_item(dictionary.get(), std::string_view(key), json_to_python(member));
        return dictionary;
    }
    case anvil::json::value_t::array: {
        auto list = py_ref::checked(PyList_New(0));
        for (const auto& item : value) {
            if (PyList_Append(list.get(), json_to_python(item).get()) < 0)
                throw python_error{};
        }
        return list;
    }
    case anvil::json::value_t::string:
        return text_to_python(value.get_ref<const std::string&>());
    case anvil::json::value_t::boolean:
        return py_ref::borrow(value.get<bool>() ? Py_True : Py_False);
    case anvil::json::value_t::number_integer:
        return py_ref::checked(PyLong_FromLongLong(value.get<std::int64_t>()));
    case anvil::json::value_t::number_unsigned:
        return py_ref::checked(PyLong_FromUnsignedLongLong(value.get<std::uint64_t>()));
    case anvil::json::value_t::number_float:
        return py_ref::checked(PyFloat_FromDouble(value.get<double>()));
    default:
        return py_ref::none();
    }
}

} // namespace mox
