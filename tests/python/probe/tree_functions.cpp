#include "store/python.hpp"

#include <string>

#include <strata/access/name_hash.hpp>
#include <strata/data_store.hpp>

#include "module/function_row.hpp"
#include "store/dictionary.hpp"
#include "store/numpy_types.hpp"
#include "store/typed_access.hpp"
#include "tests/python/probe/functions.hpp"
#include "tests/python/probe/natives.hpp"
#include "tests/python/probe/places.hpp"

namespace mox::probe {

namespace {

/// The elements as they are stored: a list of texts, an array otherwise; None without an element
/// kind.
template <typename Source>
py_ref stored_elements(const Source& source, const strata::data_shape& shape) {
    const auto type = source.type();
    if (strata::element_kind(type) == strata::data_type::invalid)
        return py_ref::none();
    if (strata::element_kind(type) == strata::data_type::string) {
        std::vector<std::string> texts;
        if constexpr (std::is_same_v<Source, strata::data_attribute>)
            texts = read_vector<std::string>(source);
        else
            read_vector(source, texts);
        return python_from(texts);
    }
    auto array = new_array(shape, numpy_type_of(type));
    if (shape.element_count() != 0 && !source.read_value(PyArray_DATA(array.array()), type))
        return py_ref::none();
    return array;
}

/// A text, since no number of this kind is returned by any function.
py_ref hash_of_name(const std::string& name) {
    return python_from(std::to_string(strata::name_hash(name)));
}

py_ref type_number(strata::data_type type) { return python_from(static_cast<std::int32_t>(type)); }

py_ref describe(const strata::data_attribute& attribute) {
    const auto shape = attribute.shape();
    auto description = py_ref::checked(PyTuple_New(3));
    PyTuple_SET_ITEM(description.get(), 0, type_number(attribute.type()).release());
    PyTuple_SET_ITEM(description.get(), 1, python_from(shape.dimensions()).release());
    PyTuple_SET_ITEM(description.get(), 2, stored_elements(attribute, shape).release());
    return description;
}

template <typename Owner> py_ref describe_attributes(const Owner& owner) {
    auto attributes = py_ref::checked(PyDict_New());
    for (const auto& name : owner.list_attributes_name())
        set_item(attributes.get(), std::string_view(name),
                 describe(owner.retrieve_attribute(name)));
    return attributes;
}

py_ref describe(const strata::data_set& set) {
    const auto shape = set.shape(false);
    auto description = py_ref::checked(PyDict_New());
    set_item(description.get(), "type", type_number(set.type()));
    set_item(description.get(), "shape", python_from(shape.dimensions()));
    set_item(description.get(), "values", stored_elements(select_all(set), shape));
    set_item(description.get(), "attributes", describe_attributes(set));
    return description;
}

py_ref describe(const strata::data_group& group) {
    auto sets = py_ref::checked(PyDict_New());
    for (const auto& name : group.list_set_children_name())
        set_item(sets.get(), std::string_view(name), describe(group.retrieve_set(name)));
    auto groups = py_ref::checked(PyDict_New());
    for (const auto& name : group.list_group_children_name())
        set_item(groups.get(), std::string_view(name), describe(group.retrieve_group(name)));
    auto description = py_ref::checked(PyDict_New());
    set_item(description.get(), "attributes", describe_attributes(group));
    set_item(description.get(), "sets", sets);
    set_item(description.get(), "groups", groups);
    return description;
}

py_ref tree(strata::data_store store) { return describe(store.root()); }

py_ref list_groups(strata::data_store store, const std::string& path) {
    return python_from(group_at(store, path).list_group_children_name());
}
py_ref list_sets(strata::data_store store, const std::string& path) {
    return python_from(group_at(store, path).list_set_children_name());
}
py_ref list_attributes(strata::data_store store, const std::string& path) {
    if (store.root().exists_set(path))
        return python_from(set_at(store, path).list_attributes_name());
    return python_from(group_at(store, path).list_attributes_name());
}

void create_group(strata::data_store store, const std::string& path) {
    store.root().create_group(path);
}
void delete_group(strata::data_store store, const std::string& path) {
    store.root().delete_group(path);
}
void create_set(strata::data_store store, const std::string& path, int type, PyObject* dimensions) {
    store.root().create_set(path, shape_from(dimensions), static_cast<strata::data_type>(type));
}

void create_attribute(strata::data_store store, const std::string& path, const std::string& name,
                      int type, PyObject* dimensions) {
    const auto shape = shape_from(dimensions);
    if (store.root().exists_set(path))
        set_at(store, path).create_attribute(name, shape, static_cast<strata::data_type>(type));
    else
        group_at(store, path).create_attribute(name, shape, static_cast<strata::data_type>(type));
}

void delete_attribute(strata::data_store store, const std::string& path, const std::string& name) {
    if (store.root().exists_set(path))
        set_at(store, path).delete_attribute(name);
    else
        group_at(store, path).delete_attribute(name);
}

} // namespace

std::vector<PyMethodDef> tree_functions() {
    return {
        function_row<"hash_of_name", &hash_of_name>(),
        function_row<"tree", &tree>(),
        function_row<"list_groups", &list_groups>(),
        function_row<"list_sets", &list_sets>(),
        function_row<"list_attributes", &list_attributes>(),
        function_row<"create_group", &create_group>(),
        function_row<"delete_group", &delete_group>(),
        function_row<"create_set", &create_set>(),
        function_row<"create_attribute", &create_attribute>(),
        function_row<"delete_attribute", &delete_attribute>(),
    };
}

} // namespace mox::probe
