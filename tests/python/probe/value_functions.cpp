#include "store/python.hpp"

#include <cstdint>
#include <string>

#include <strata/data_store.hpp>

#include "module/function_row.hpp"
#include "store/dictionary.hpp"
#include "store/matrix_writer.hpp"
#include "store/numpy_types.hpp"
#include "store/python_read.hpp"
#include "store/python_write.hpp"
#include "tests/python/probe/functions.hpp"
#include "tests/python/probe/natives.hpp"
#include "tests/python/probe/places.hpp"

namespace mox::probe {

namespace {

array_form form_of(int transpose, int squeeze) {
    return {.transpose = transpose != 0, .squeeze = squeeze != 0};
}

/// An attribute as Python, the set itself where no attribute is named.
py_ref read_value(strata::data_store store, const std::string& path, const std::string& name,
                  int transpose, int squeeze) {
    if (name.empty())
        return read_as_python(set_at(store, path), form_of(transpose, squeeze));
    return read_as_python(attribute_at(store, path, name), form_of(transpose, squeeze));
}

py_ref read_selection_value(strata::data_store store, const std::string& path,
                            PyObject* coordinates, int transpose, int squeeze) {
    return read_as_python(selection_at(store, path, coordinates), form_of(transpose, squeeze));
}

py_ref read_scalar(strata::data_store store, const std::string& path, const std::string& name) {
    return read_scalar_as_python(attribute_at(store, path, name));
}

py_ref fill_array(strata::data_store store, const std::string& path, PyObject* coordinates,
                  PyObject* array) {
    const auto selection = selection_at(store, path, coordinates);
    return python_from(read_into_array(selection, reinterpret_cast<PyArrayObject*>(array)));
}

void write_value(strata::data_store store, const std::string& path, const std::string& name,
                 int type, PyObject* value) {
    write_python_value(attribute_at(store, path, name), static_cast<strata::data_type>(type),
                       value);
}

void write_new(strata::data_store store, const std::string& path, const std::string& name,
               const std::string& format, PyObject* value) {
    write_python_value_as_new(group_at(store, path), name, format, value);
}

py_ref store_type_of_value(PyObject* value) {
    return python_from(static_cast<std::int32_t>(mox::store_type_of_value(value)));
}

py_ref shape_of_value(PyObject* value) {
    return python_from(mox::shape_of_value(value).dimensions());
}

py_ref dtype_of_store_type(int type) {
    const int number = numpy_type_of(static_cast<strata::data_type>(type));
    return py_ref::checked(reinterpret_cast<PyObject*>(PyArray_DescrFromType(number)));
}

void item_from_attribute(PyObject* dictionary, strata::data_store store, const std::string& path,
                         const std::string& name) {
    set_item_from_attribute(dictionary, set_at(store, path), name.c_str());
}

void item_from_value(PyObject* dictionary, const std::string& key, PyObject* value) {
    set_item_from_value(dictionary, key, value);
}

py_ref as_matrix(PyObject* value) { return mox::as_matrix(value); }

void write_matrix(strata::data_store store, const std::string& path, PyObject* value,
                  int first_column) {
    const auto matrix = mox::as_matrix(value);
    write_matrix_columns(set_at(store, path), matrix.array(),
                         static_cast<std::uint64_t>(first_column));
}

} // namespace

std::vector<PyMethodDef> value_functions() {
    return {
        function_row<"read_value", &read_value>(),
        function_row<"read_selection_value", &read_selection_value>(),
        function_row<"read_scalar", &read_scalar>(),
        function_row<"fill_array", &fill_array>(),
        function_row<"write_value", &write_value>(),
        function_row<"write_new", &write_new>(),
        function_row<"store_type_of_value", &store_type_of_value>(),
        function_row<"shape_of_value", &shape_of_value>(),
        function_row<"dtype_of_store_type", &dtype_of_store_type>(),
        function_row<"item_from_attribute", &item_from_attribute>(),
        function_row<"item_from_value", &item_from_value>(),
        function_row<"as_matrix", &as_matrix>(),
        function_row<"write_matrix", &write_matrix>(),
    };
}

} // namespace mox::probe
