#include "store/python.hpp"

#include "api/metadata/read_metadata.hpp"

#include <algorithm>
#include <string_view>

#include "api/metadata/format_names.hpp"
#include "api/metadata/metadata_path.hpp"
#include "store/dictionary.hpp"
#include "store/numpy_types.hpp"
#include "store/python_read.hpp"

namespace mox::metadata {

namespace {

py_ref number(double value) { return py_ref::checked(PyFloat_FromDouble(value)); }

py_ref dimensions_of(const strata::data_attribute& entry) {
    const auto shape = entry.shape();
    const auto& dimensions = shape.dimensions();
    auto array = new_array(
        strata::data_shape({static_cast<std::int64_t>(dimensions.size())}, false), NPY_INT64);
    std::copy(dimensions.begin(), dimensions.end(),
              static_cast<std::int64_t*>(PyArray_DATA(array.array())));
    return array;
}

py_ref children_of(const strata::data_group& group) {
    const auto entries = group.list_attributes_name();
    const auto groups = group.list_group_children_name();
    if (entries.empty() && groups.empty())
        // Kept: not an empty dictionary.
        return number(0.0);
    auto children = py_ref::checked(PyDict_New());
    for (const auto& name : entries)
        set_item(children.get(), std::string_view(name),
                 entry_dictionary(group.retrieve_attribute(name)));
    for (const auto& name : groups)
        set_item(children.get(), std::string_view(name),
                 group_dictionary(group.retrieve_group(name)));
    return children;
}

} // namespace

py_ref entry_dictionary(const strata::data_attribute& entry) {
    auto info = py_ref::checked(PyDict_New());
    set_item(info.get(), "values",
             read_as_python(entry, array_form{.transpose = true, .squeeze = false}));
    set_item(info.get(), "format", text_to_python(format_of_type(entry.type())));
    set_item(info.get(), "dims", dimensions_of(entry));
    auto dictionary = py_ref::checked(PyDict_New());
    // Kept: three constants, whatever the entry is.
    set_item(dictionary.get(), "unlocked", number(1.0));
    set_item(dictionary.get(), "children", number(0.0));
    set_item(dictionary.get(), "description", text_to_python(""));
    set_item(dictionary.get(), "info", info);
    return dictionary;
}

py_ref group_dictionary(const strata::data_group& group) {
    auto dictionary = py_ref::checked(PyDict_New());
    set_item(dictionary.get(), "unlocked", number(1.0));
    set_item(dictionary.get(), "description", text_to_python(""));
    set_item(dictionary.get(), "info", number(0.0));
    set_item(dictionary.get(), "children", children_of(group));
    return dictionary;
}

py_ref all(strata::data_store acquisition) { return group_dictionary(metadata_root(acquisition)); }

py_ref of_group(strata::data_store acquisition, const std::string& group) {
    return group_dictionary(existing_group(acquisition, path_of(group, {})));
}

py_ref of_entry(strata::data_store acquisition, const std::string& group,
                const std::string& entry) {
    const auto path = path_of(group, entry);
    return path.entry.empty() ? group_dictionary(existing_group(acquisition, path))
                              : entry_dictionary(existing_entry(acquisition, path));
}

} // namespace mox::metadata
