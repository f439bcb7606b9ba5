#include "store/python.hpp"

#include "store/python_read.hpp"

#include "store/numpy_types.hpp"
#include "store/store_log.hpp"
#include "store/swig_error.hpp"
#include "store/typed_access.hpp"
#include "store/unreadable_scalar.hpp"

namespace mox {

namespace {

using strata::data_type;

/// Reads one number with a plain C++ type. A value that cannot be read counts as 0 and is logged by
/// the caller's `failure`.
template <typename Native, typename Source>
Native read_one(const Source& source, std::string_view failure) {
    Native value{};
    if (!source.read_value(&value, strata::data_type_of<Native>))
        log_store_failure(failure);
    return value;
}

template <typename Source> py_ref read_number(const Source& source, std::string_view failure) {
    require_readable(source.type(), 1);
    switch (strata::element_kind(source.type())) {
    case data_type::float32:
        return py_ref::checked(
            PyFloat_FromDouble(static_cast<double>(read_one<float>(source, failure))));
    case data_type::float64:
        return py_ref::checked(PyFloat_FromDouble(read_one<double>(source, failure)));
    case data_type::int16:
    case data_type::int32:
        return py_ref::checked(PyLong_FromLong(read_one<std::int32_t>(source, failure)));
    case data_type::int64:
        return py_ref::checked(PyLong_FromLongLong(read_one<std::int64_t>(source, failure)));
    default:
        return py_ref::borrow(read_one<bool>(source, failure) ? Py_True : Py_False);
    }
}

py_ref arranged(py_ref array, array_form form) {
    if (form.squeeze)
        array = py_ref::checked(PyArray_Squeeze(array.array()));
    if (form.transpose)
        array = py_ref::checked(PyArray_Transpose(array.array(), nullptr));
    return array;
}

template <typename Source>
py_ref read_array(const Source& source, const strata::data_shape& shape, array_form form,
                  std::string_view failure) {
    auto array = new_array(shape, numpy_type_of(source.type()));
    if (shape.element_count() != 0 &&
        !source.read_value(PyArray_DATA(array.array()), store_type_of_array(array.array()))) {
        log_store_failure(failure);
        PyArray_FILLWBYTE(array.array(), 0);
    }
    return arranged(std::move(array), form);
}

std::vector<std::string> texts_of(const strata::data_attribute& attribute) {
    return read_vector<std::string>(attribute);
}

std::vector<std::string> texts_of(const strata::data_selection& selection) {
    std::vector<std::string> texts;
    read_vector(selection, texts);
    return texts;
}

template <typename Source>
py_ref read_text_list(const Source& source, const strata::data_shape& shape) {
    auto texts = texts_of(source);
    const auto count = static_cast<std::size_t>(shape.dimensions().front());
    texts.resize(count); // Kept: a list has the length of the first dimension, whatever others hold
    auto list = py_ref::steal(PyList_New(static_cast<Py_ssize_t>(count)));
    if (!list) {
        PyErr_Clear();
        throw_system_error("Impossible to create a list of unicode strings");
    }
    for (std::size_t i = 0; i < count; ++i) {
        PyObject* text = PyUnicode_DecodeUTF8(
            texts[i].data(), static_cast<Py_ssize_t>(texts[i].size()), "surrogateescape");
        if (!text) {
            PyErr_Clear();
            throw_system_error("Impossible to create a unicode string stored in a list");
        }
        PyList_SET_ITEM(list.get(), static_cast<Py_ssize_t>(i), text);
    }
    return list;
}

template <typename Source>
py_ref read_single_text(const Source& source, const strata::data_shape& shape) {
    if (shape.element_count() != 1)
        throw_system_error("No string to read");
    auto texts = texts_of(source);
    texts.resize(1);
    auto text = py_ref::steal(PyUnicode_DecodeUTF8(
        texts.front().data(), static_cast<Py_ssize_t>(texts.front().size()), "surrogateescape"));
    if (!text) {
        PyErr_Clear();
        throw_system_error("Impossible to create a single unicode string");
    }
    return text;
}

void require_valid(data_type type) {
    if (type == data_type::invalid)
        throw_runtime_error(
            "Impossible to read the content of a data object with an invalid data type");
}

template <typename Source>
py_ref read_source(const Source& source, array_form form, std::string_view failure) {
    require_valid(source.type());
    const auto shape = source.shape();
    if (strata::element_kind(source.type()) == data_type::string)
        return shape.dimensions().empty() ? read_single_text(source, shape)
                                          : read_text_list(source, shape);
    if (shape.element_count() == 1)
        return read_number(source, failure);
    return read_array(source, shape, form, failure);
}

} // namespace

py_ref read_as_python(const strata::data_attribute& attribute, array_form form) {
    return read_source(attribute, form, store_failure::read_attribute);
}

py_ref read_as_python(const strata::data_selection& selection, array_form form) {
    return read_source(selection, form, store_failure::read_set);
}

py_ref read_as_python(const strata::data_set& set, array_form form) {
    require_valid(set.type());
    return read_as_python(select_all(set), form);
}

py_ref read_scalar_as_python(const strata::data_attribute& attribute) {
    return read_as_python(attribute, array_form{});
}

bool read_into_array(const strata::data_selection& selection, PyArrayObject* array) {
    if (!selection) {
        log_store_failure(store_failure::read_selection);
        return false;
    }
    const auto type = store_type_of_array(array);
    if (type == data_type::invalid || type == data_type::string) {
        log_store_failure(store_failure::read_selection_type);
        return false;
    }
    const auto elements = static_cast<std::uint64_t>(PyArray_SIZE(array));
    if (selection.shape().element_count() != elements || !PyArray_ISCARRAY(array)) {
        log_store_failure(store_failure::read_set);
        return false;
    }
    if (elements == 0 || selection.read_value(PyArray_DATA(array), type))
        return true;
    log_store_failure(store_failure::read_set);
    return false;
}

py_ref text_to_python(std::string_view text) {
    return py_ref::checked(
        PyUnicode_DecodeUTF8(text.data(), static_cast<Py_ssize_t>(text.size()), "surrogateescape"));
}

} // namespace mox
