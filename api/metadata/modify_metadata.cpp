#include "store/python.hpp"

#include "api/metadata/modify_metadata.hpp"

#include "api/metadata/info_record.hpp"
#include "api/metadata/metadata_path.hpp"
#include "api/metadata/read_metadata.hpp"
#include "store/attribute_rebuild.hpp"
#include "store/dimension_list.hpp"
#include "store/numpy_types.hpp"
#include "store/python_write.hpp"
#include "store/swig_error.hpp"
#include "store/unreadable_scalar.hpp"

namespace mox::metadata {

namespace {

constexpr char different_shape[] =
    "Impossible to write value(s) with a shape different than the one stored in the data attribute";

/// Makes the entry elsewhere first, so that nothing is lost, and no group made, when it cannot be
/// made.
void write_entry(const strata::data_store& acquisition, const entry_path& path,
                 const new_entry& content) {
    strata::data_store scratch;
    write_python_value_as_new(scratch.root(), path.entry, content.format, content.values.get());
    const auto made = scratch.root().retrieve_attribute(path.entry);
    auto group = group_to_add_to(acquisition, path);
    if (group.exists_attribute(path.entry))
        group.delete_attribute(path.entry);
    group.copy_attribute(made);
}

void write_value(const strata::data_store& acquisition, const entry_path& path, PyObject* value) {
    const auto type = store_type_of_value(value);
    const auto shape = shape_of_value(value);
    auto entry = existing_entry(acquisition, path);
    if (type == strata::data_type::invalid)
        throw swig_error(error_code::type, "Unsupported data type");
    if (!(shape == entry.shape()))
        throw_runtime_error(different_shape);
    require_same_kind(entry.type(), type);
    write_python_value(entry, type, value);
}

void change_format(const strata::data_store& acquisition, const entry_path& path,
                   const std::string& format) {
    const auto entry = existing_entry(acquisition, path);
    const auto target = type_of_format(format);
    switch (strata::element_kind(entry.type())) {
    case strata::data_type::int8:
    case strata::data_type::int16:
    case strata::data_type::float32:
    case strata::data_type::string:
        require_readable(target, entry.shape().element_count());
        change_element_type(existing_group(acquisition, path), path.entry, target);
        break;
    default:
        break; // entries of other types keep theirs
    }
}

void change_dimensions(const strata::data_store& acquisition, const entry_path& path,
                       PyObject* value) {
    (void)existing_entry(acquisition, path); // comes before what is wrong with the dimensions
    const auto dimensions = dimension_list(value);
    // Anew: reading the list may run Python code that changes the acquisition.
    const auto entry = existing_entry(acquisition, path);
    require_readable(entry.type(), strata::data_shape(dimensions, false).element_count());
    change_extent(existing_group(acquisition, path), path.entry, dimensions);
}

} // namespace

py_ref append(strata::data_store acquisition, const std::string& group, const std::string& entry,
              PyObject* info) {
    const auto content = checked_info(info);
    require_entry_name(entry);
    write_entry(acquisition, path_of(group, entry), content);
    return all(acquisition);
}

py_ref set(strata::data_store acquisition, const std::string& group, const std::string& entry,
           PyObject* info) {
    if (!exists_entry(acquisition, path_of(group, entry)))
        // Kept with its wording: scripts compare this text.
        throw_runtime_error("Unable to set metadata : it doesn't exists in given acquisition");
    return append(acquisition, group, entry, info);
}

py_ref set_value(strata::data_store acquisition, const std::string& group, const std::string& entry,
                 PyObject* value) {
    write_value(acquisition, path_of(group, entry), value);
    return all(acquisition);
}

py_ref set_value_at(strata::data_store acquisition, const std::string& path, PyObject* value) {
    write_value(acquisition, path_of(path), value);
    return all(acquisition);
}

py_ref set_format(strata::data_store acquisition, const std::string& group,
                  const std::string& entry, const std::string& format) {
    change_format(acquisition, path_of(group, entry), format);
    return all(acquisition);
}

py_ref set_format_at(strata::data_store acquisition, const std::string& path,
                     const std::string& format) {
    change_format(acquisition, path_of(path), format);
    return all(acquisition);
}

py_ref set_dimensions(strata::data_store acquisition, const std::string& group,
                      const std::string& entry, PyObject* dimensions) {
    change_dimensions(acquisition, path_of(group, entry), dimensions);
    return all(acquisition);
}

py_ref set_dimensions_at(strata::data_store acquisition, const std::string& path,
                         PyObject* dimensions) {
    change_dimensions(acquisition, path_of(path), dimensions);
    return all(acquisition);
}

py_ref set_description(strata::data_store acquisition, const std::string& /*group*/,
                       const std::string& /*entry*/, const std::string& /*description*/) {
    return all(acquisition);
}

py_ref set_description_at(strata::data_store acquisition, const std::string& /*path*/,
                          const std::string& /*description*/) {
    return all(acquisition);
}

py_ref remove_group(strata::data_store acquisition, const std::string& group) {
    const auto path = path_of(group, {});
    (void)existing_group(acquisition, path);
    delete_metadata_group(acquisition, path);
    return all(acquisition);
}

py_ref remove_entry(strata::data_store acquisition, const std::string& group,
                    const std::string& entry) {
    if (entry.empty())
        return remove_group(acquisition, group);
    const auto path = path_of(group, entry);
    (void)existing_entry(acquisition, path);
    existing_group(acquisition, path).delete_attribute(path.entry);
    return all(acquisition);
}

void clear(strata::data_store acquisition) {
    auto root = metadata_root(acquisition);
    for (const auto& name : root.list_group_children_name())
        root.delete_group(name);
}

} // namespace mox::metadata
