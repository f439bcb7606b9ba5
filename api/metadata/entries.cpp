#include "store/python.hpp"

#include "api/metadata/entries.hpp"

#include <algorithm>
#include <cstddef>

#include <strata/data_attribute.hpp>
#include <strata/data_group.hpp>
#include <strata/data_type.hpp>

#include "api/metadata/format_names.hpp"
#include "schema/names.hpp"
#include "schema/read_attribute.hpp"
#include "store/numpy_types.hpp"
#include "store/path_helpers.hpp"
#include "store/python_read.hpp"
#include "store/python_write.hpp"
#include "store/swig_error.hpp"
#include "store/unreadable_scalar.hpp"

namespace mox::metadata {

namespace {

using strata::data_type;

bool is_one_name(const std::string& name) {
    return !name.empty() && name.find('/') == std::string::npos;
}

std::optional<strata::data_group> find_group(const strata::data_store& acquisition,
                                             const std::string& name) {
    const auto root = acquisition.root();
    if (!is_one_name(name) || !root.exists_group(schema::metadata))
        return {};
    const auto all = root.retrieve_group(schema::metadata);
    if (!all.exists_group(name))
        return {};
    return all.retrieve_group(name);
}

/// Denotes nothing when there is no such entry.
strata::data_attribute find_entry(const strata::data_group& group, const std::string& name) {
    return is_one_name(name) ? group.retrieve_attribute(name) : strata::data_attribute();
}

py_ref texts_of(const strata::data_attribute& entry) {
    const auto shape = entry.shape();
    auto texts = schema::read_texts(entry);
    texts.resize(static_cast<std::size_t>(shape.element_count()));
    auto array = new_array(shape, NPY_OBJECT);
    auto** items = static_cast<PyObject**>(PyArray_DATA(array.array()));
    for (std::size_t i = 0; i < texts.size(); ++i)
        Py_XSETREF(items[i], text_to_python(texts[i]).release());
    return array;
}

py_ref numbers_of(const strata::data_attribute& entry) {
    auto array = new_array(entry.shape(), numpy_type_of(entry.type()));
    if (PyArray_SIZE(array.array()) != 0 &&
        !entry.read_value(PyArray_DATA(array.array()), entry.type()))
        throw_system_error("The metadata entry '" + entry.name() + "' cannot be read");
    return array;
}

data_type type_of_content(PyObject* content) {
    if (!PyArray_Check(content))
        throw swig_error(error_code::type, "The content of a metadata entry is an array");
    auto* array = reinterpret_cast<PyArrayObject*>(content);
    const auto type =
        PyArray_TYPE(array) == NPY_OBJECT ? data_type::string : store_type_of_array(array);
    if (type == data_type::invalid)
        throw swig_error(error_code::type, "Unsupported data type");
    return type;
}

/// Creates the entry `name` of `group`. The type number of the `stored` one stays where it denotes
/// the same kind.
void create_entry(strata::data_group group, const std::string& name, PyObject* content,
                  const strata::data_attribute& stored) {
    auto type = type_of_content(content);
    if (stored && strata::element_kind(stored.type()) == type)
        type = stored.type();
    const auto shape = shape_of_value(content);
    if (!stored || stored.type() != type || !(stored.shape() == shape))
        require_readable(type, shape.element_count());
    write_python_value(group.create_attribute(name, shape, type), type, content);
}

strata::data_group group_to_write(const strata::data_store& acquisition, const std::string& name) {
    return retrieve_or_create_group(retrieve_or_create_group(acquisition.root(), schema::metadata),
                                    name);
}

} // namespace

std::vector<std::string> group_names(strata::data_store acquisition) {
    const auto root = acquisition.root();
    if (!root.exists_group(schema::metadata))
        return {};
    return root.retrieve_group(schema::metadata).list_group_children_name();
}

std::optional<std::vector<std::string>> entry_names(strata::data_store acquisition,
                                                    const std::string& group) {
    const auto found = find_group(acquisition, group);
    if (!found)
        return {};
    return found->list_attributes_name();
}

py_ref has_group(strata::data_store acquisition, const std::string& group) {
    return py_ref::checked(PyBool_FromLong(find_group(acquisition, group) ? 1 : 0));
}

py_ref has_entry(strata::data_store acquisition, const std::string& group,
                 const std::string& entry) {
    const auto owner = find_group(acquisition, group);
    return py_ref::checked(PyBool_FromLong(owner && find_entry(*owner, entry) ? 1 : 0));
}

py_ref entry_content(strata::data_store acquisition, const std::string& group,
                     const std::string& entry) {
    const auto owner = find_group(acquisition, group);
    const auto found = owner ? find_entry(*owner, entry) : strata::data_attribute();
    if (!found)
        return py_ref::none();
    const auto kind = strata::element_kind(found.type());
    const auto content = kind == data_type::string ? texts_of(found) : numbers_of(found);
    // One word for all integers, the ones without a sign included.
    const auto* format =
        format_of_type(kind == data_type::uint16 ? data_type::int16 : found.type());
    return py_ref::checked(PyTuple_Pack(2, text_to_python(format).get(), content.get()));
}

void set_entry_content(strata::data_store acquisition, const std::string& group,
                       const std::string& entry, PyObject* content) {
    // Made elsewhere first: a failure leaves the entry, and makes no group.
    const auto owner = find_group(acquisition, group);
    strata::data_store scratch;
    create_entry(scratch.root(), entry, content,
                 owner ? find_entry(*owner, entry) : strata::data_attribute());
    group_to_write(acquisition, group).copy_attribute(scratch.root().retrieve_attribute(entry));
}

void set_group_content(strata::data_store acquisition, const std::string& group,
                       PyObject* contents) {
    if (!PyDict_Check(contents))
        throw swig_error(error_code::type, "The content of a metadata group is a dictionary");
    const auto owner = find_group(acquisition, group);
    strata::data_store scratch;
    PyObject* key = nullptr;
    PyObject* content = nullptr;
    Py_ssize_t position = 0;
    while (PyDict_Next(contents, &position, &key, &content) != 0) {
        const char* name = PyUnicode_AsUTF8(key);
        if (!name)
            throw python_error{};
        create_entry(scratch.root(), name, content,
                     owner ? find_entry(*owner, name) : strata::data_attribute());
    }
    auto target = group_to_write(acquisition, group);
    const auto made = scratch.root().list_attributes_name();
    for (const auto& name : target.list_attributes_name()) {
        if (std::find(made.begin(), made.end(), name) == made.end())
            target.delete_attribute(name);
    }
    for (const auto& name : made)
        target.copy_attribute(scratch.root().retrieve_attribute(name));
}

void delete_group(strata::data_store acquisition, const std::string& group) {
    acquisition.root().retrieve_group(schema::metadata).delete_group(group);
}

void delete_entry(strata::data_store acquisition, const std::string& group,
                  const std::string& entry) {
    if (auto owner = find_group(acquisition, group))
        owner->delete_attribute(entry);
}

} // namespace mox::metadata
