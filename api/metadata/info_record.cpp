#include "store/python.hpp"

#include "api/metadata/info_record.hpp"

#include <fmt/format.h>

#include "api/metadata/format_names.hpp"
#include "store/dictionary.hpp"
#include "store/json_conversion.hpp"
#include "store/numpy_types.hpp"
#include "store/python_write.hpp"
#include "store/swig_error.hpp"
#include "store/unreadable_scalar.hpp"

namespace mox::metadata {

namespace {

std::string checked_format(const anvil::json& info) {
    if (!info.contains("format"))
        throw_runtime_error("Given struct has no field \"format\"");
    const auto& format = info["format"];
    if (!format.is_string())
        throw_runtime_error("Given struct field \"format\" needs to have a string value");
    auto name = format.get<std::string>();
    if (!is_format_name(name)) {
        throw_runtime_error("Given struct field \"format\" needs to correspond to a real type "
                            "{\"Integer\", \"Char\", "
                            "\"Real\", \"Byte\"}");
    }
    return name;
}

void require_depth(std::size_t dimensions) {
    constexpr std::size_t most = 7; // as in a file
    if (dimensions > most) {
        throw_runtime_error(fmt::format(
            "The values of a metadata entry can have at most {} dimensions, current has : {}", most,
            dimensions));
    }
}

} // namespace

new_entry checked_info(PyObject* info) {
    const auto json = python_to_json(info);
    auto format = checked_format(json);
    if (!json.contains("values"))
        throw_runtime_error("Given struct has no field \"values\"");
    auto values = py_ref::borrow(PyDict_GetItemString(info, "values"));
    if (!values)
        throw_runtime_error("Given struct has no field \"values\"");
    const auto type = type_of_format(format);
    require_depth(shape_of_value(values.get()).dimensions().size());
    const auto given = store_type_of_value(values.get());
    if (given != strata::data_type::invalid)
        require_same_kind(type, given);
    require_readable(type, shape_of_value(values.get()).element_count());
    return {std::move(format), std::move(values)};
}

void require_same_kind(strata::data_type stored, strata::data_type given) {
    const bool stores_text = strata::element_kind(stored) == strata::data_type::string;
    const bool gives_text = strata::element_kind(given) == strata::data_type::string;
    if (stores_text && !gives_text)
        throw_runtime_error(
            "Impossible to write number(s) into a metadata entry of format \"Char\"");
    if (!stores_text && gives_text)
        throw_runtime_error("Impossible to write text into a metadata entry of numbers");
}

py_ref info_record(const std::string& format, PyObject* values) {
    return info_record_of_dimensions(format, values,
                                     static_cast<int>(shape_of_value(values).dimensions().size()));
}

py_ref info_record_of_dimensions(const std::string& format, PyObject* values, int dimensions) {
    const auto extents = shape_of_value(values).dimensions().size();
    if (dimensions < static_cast<int>(extents)) {
        throw_runtime_error("Given number of dimensions is lower than the number of dimensions for "
                            "the given values.");
    }
    auto record = py_ref::checked(PyDict_New());
    set_item(record.get(), "format",
             py_ref::checked(PyUnicode_FromStringAndSize(format.data(),
                                                         static_cast<Py_ssize_t>(format.size()))));
    set_item_from_value(record.get(), "values", values);
    set_item(record.get(), "numdims", py_ref::checked(PyLong_FromLong(dimensions)));
    return record;
}

} // namespace mox::metadata
