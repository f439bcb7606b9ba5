#include "store/python.hpp"

#include "store/dictionary.hpp"

#include <limits>

#include <fmt/format.h>

#include "store/python_read.hpp"
#include "store/swig_error.hpp"

namespace mox {

namespace {

py_ref normal_int(PyObject* value) {
    int overflow = 0;
    long long number = PyLong_AsLongLongAndOverflow(value, &overflow);
    if (PyErr_Occurred())
        throw python_error{};
    const bool fits = overflow == 0 && number >= std::numeric_limits<std::int32_t>::min() &&
                      number <= std::numeric_limits<std::int32_t>::max();
    // Kept: what has no room in 32 bits is -1.
    return py_ref::checked(PyLong_FromLongLong(fits ? number : -1));
}

py_ref normal_text(PyObject* value) {
    Py_ssize_t length = 0;
    const char* text = PyUnicode_AsUTF8AndSize(value, &length);
    if (!text)
        throw python_error{};
    return text_to_python({text, static_cast<std::size_t>(length)});
}

py_ref normal_bytes(PyObject* value) {
    char* data = nullptr;
    Py_ssize_t length = 0;
    if (PyBytes_AsStringAndSize(value, &data, &length) < 0) {
        PyErr_Clear();
        return py_ref::none();
    }
    return text_to_python({data, static_cast<std::size_t>(length)});
}

py_ref normal_form(PyObject* value) {
    if (PyBytes_Check(value))
        return normal_bytes(value);
    if (PyUnicode_Check(value))
        return normal_text(value);
    if (PyFloat_Check(value))
        // Kept: in single precision.
        return py_ref::checked(PyFloat_FromDouble(static_cast<float>(PyFloat_AS_DOUBLE(value))));
    if (PyBool_Check(value))
        return py_ref::checked(PyLong_FromLong(value == Py_True));
    if (PyLong_Check(value))
        return normal_int(value);
    if (PyArray_Check(value))
        return py_ref::checked(PyArray_FromAny(value, nullptr, 0, 0, 0, nullptr));
    if (PyList_Check(value))
        return py_ref::checked(PyList_GetSlice(value, 0, PyList_GET_SIZE(value)));
    return py_ref::borrow(value);
}

} // namespace

void set_item(PyObject* dictionary, std::string_view key, const py_ref& value) {
    const auto name = text_to_python(key);
    if (PyDict_SetItem(dictionary, name.get(), value.get()) < 0)
        throw python_error{};
}

void set_item(PyObject* dictionary, const char* key, const py_ref& value) {
    if (PyDict_SetItemString(dictionary, key, value.get()) < 0)
        throw python_error{};
}

py_ref required_attribute(const strata::data_set& set, const char* attribute) {
    const auto found = set.retrieve_attribute(attribute);
    if (!found) {
        throw_system_error(fmt::format(
            "Unexpected error when extracting attribute value : set is {}, attribute is {}",
            set.name(), attribute));
    }
    return read_as_python(found, array_form{.transpose = false, .squeeze = true});
}

void set_item_from_attribute(PyObject* dictionary, const strata::data_set& set,
                             const char* attribute) {
    set_item(dictionary, attribute, required_attribute(set, attribute));
}

void set_item_from_value(PyObject* dictionary, std::string_view key, PyObject* value) {
    set_item(dictionary, key, normal_form(value));
}

} // namespace mox
