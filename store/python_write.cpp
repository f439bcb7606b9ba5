#include "store/python.hpp"

#include "store/python_write.hpp"

#include <cstring>
#include <map>
#include <stdexcept>
#include <vector>

#include "store/integer_range.hpp"
#include "store/list_elements.hpp"
#include "store/numpy_types.hpp"
#include "store/store_log.hpp"
#include "store/swig_error.hpp"

namespace mox {

namespace {

using strata::data_type;

void write_elements(strata::data_attribute& attribute, const void* elements, std::uint64_t count,
                    data_type type) {
    if (attribute.shape().element_count() != count) {
        log_store_failure(store_failure::attribute_count);
        return;
    }
    require_in_range(attribute.type(), elements, count, type);
    if (count != 0 && !attribute.write_value(elements, type))
        log_store_failure(store_failure::write_attribute);
}

/// The text of a bytes or str item without NUL, where the store's texts end; the item owns it.
const char* text_of_item(PyObject* item) {
    if (PyBytes_Check(item)) {
        char* text = nullptr;
        if (PyBytes_AsStringAndSize(item, &text, nullptr) == -1) {
            PyErr_Clear();
            throw_system_error("Internal error during string extraction");
        }
        return text;
    }
    Py_ssize_t length = 0;
    const char* text = PyUnicode_AsUTF8AndSize(item, &length);
    if (!text || std::memchr(text, '\0', static_cast<std::size_t>(length)) != nullptr) {
        PyErr_Clear();
        throw_system_error("Internal error during UTF8 string extraction");
    }
    return text;
}

double as_double(PyObject* item) {
    const double number = PyFloat_AsDouble(item);
    if (number == -1.0 && PyErr_Occurred())
        throw python_error{};
    return number;
}

void write_scalar(strata::data_attribute& attribute, PyObject* value) {
    if (PyFloat_Check(value)) {
        const double number = PyFloat_AS_DOUBLE(value);
        write_elements(attribute, &number, 1, data_type::float64);
    } else if (PyLong_Check(value)) {
        const auto number = int64_of(value);
        write_elements(attribute, &number, 1, data_type::int64);
    } else if (PyBytes_Check(value) || PyUnicode_Check(value)) {
        const char* text = text_of_item(value);
        write_elements(attribute, &text, 1, data_type::string);
    } else {
        throw_system_error("Unsupported Python type to write a scalar");
    }
}

void write_list(strata::data_attribute& attribute, data_type target, PyObject* list) {
    const auto items = flatten_list(list, shape_of_value(list));
    if (target == data_type::float64) {
        std::vector<double> numbers;
        numbers.reserve(items.size());
        for (const auto& item : items)
            numbers.push_back(as_double(item.get()));
        write_elements(attribute, numbers.data(), numbers.size(), target);
    } else if (target == data_type::int64) {
        std::vector<std::int64_t> numbers;
        numbers.reserve(items.size());
        for (const auto& item : items)
            numbers.push_back(c_long_of(item.get()));
        write_elements(attribute, numbers.data(), numbers.size(), target);
    } else if (target == data_type::string) {
        std::vector<const char*> texts;
        texts.reserve(items.size());
        for (const auto& item : items)
            texts.push_back(item ? text_of_item(item.get()) : "");
        write_elements(attribute, texts.data(), texts.size(), target);
    } else {
        throw_system_error("Unsupported Python type to write a List");
    }
}

void write_array(strata::data_attribute& attribute, PyObject* array) {
    const auto type = store_type_of_array(reinterpret_cast<PyArrayObject*>(array));
    if (type == data_type::invalid) {
        log_store_failure(store_failure::write_attribute_type);
        return;
    }
    // Row-major, aligned and of native byte order; a copy only where the array is not. Never of a
    // subclass: its Python code could change the attribute.
    const auto plain = py_ref::checked(PyArray_FromAny(
        array, PyArray_DescrFromType(numpy_type_of(type)), 0, 0,
        NPY_ARRAY_CARRAY_RO | NPY_ARRAY_NOTSWAPPED | NPY_ARRAY_ENSUREARRAY, nullptr));
    write_elements(attribute, PyArray_DATA(plain.array()),
                   static_cast<std::uint64_t>(PyArray_SIZE(plain.array())), type);
}

} // namespace

data_type type_of_format(const std::string& format) {
    static const std::map<std::string, data_type> types{{"Integer", data_type::int16},
                                                        {"Byte", data_type::int8},
                                                        {"Char", data_type::string},
                                                        {"Real", data_type::float32}};
    const auto found = types.find(format);
    if (found == types.end())
        // Kept: scripts compare this text.
        throw std::out_of_range("invalid map<K, T> key");
    return found->second;
}

void write_python_value(strata::data_attribute attribute, data_type target, PyObject* value) {
    if (target == data_type::invalid)
        throw_system_error("Unexpected Python type to write");
    if (PyList_Check(value)) {
        write_list(attribute, target, value);
    } else if (!PyArray_Check(value)) {
        write_scalar(attribute, value);
    } else if (strata::element_kind(target) == data_type::string) {
        const auto list = py_ref::checked(PyArray_ToList(reinterpret_cast<PyArrayObject*>(value)));
        if (PyList_Check(list.get()))
            write_list(attribute, target, list.get());
        else
            write_scalar(attribute, list.get()); // an array without dimensions
    } else {
        write_array(attribute, value);
    }
}

void write_python_value_as_new(strata::data_group group, const std::string& name,
                               const std::string& format, PyObject* value) {
    const auto type = type_of_format(format);
    const auto shape = shape_of_value(value);
    auto attribute = group.create_attribute(name, shape, type);
    try {
        if (!(attribute.shape() == shape)) {
            throw_runtime_error(
                "Impossible to write value(s) with a shape different than the one stored in the "
                "data attribute");
        }
        write_python_value(attribute, store_type_of_value(value), value);
    } catch (...) {
        group.delete_attribute(name);
        throw;
    }
}

} // namespace mox
