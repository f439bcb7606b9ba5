#include "api/metadata/metadata_path.hpp"

#include <anvil/path_text.hpp>
#include <fmt/format.h>

#include "schema/channel_names.hpp"
#include "schema/names.hpp"
#include "store/path_helpers.hpp"
#include "store/swig_error.hpp"

namespace mox::metadata {

namespace {

constexpr std::string_view ending = " does not exist";

strata::data_group format_group(const strata::data_store& acquisition) {
    const auto root = acquisition.root();
    if (!root.exists_group(schema::metadata))
        throw_no_such_group(schema::metadata, ending);
    return root.retrieve_group(schema::format);
}

} // namespace

entry_path path_of(const std::string& group, const std::string& entry) {
    return {fmt::format("{}/{}", schema::name::metadata, group),
            anvil::text_of_path(anvil::path_from_text(entry).filename())};
}

entry_path path_of(const std::string& path) {
    const auto split = path.rfind('/');
    if (split == std::string::npos)
        return path_of({}, path);
    return path_of(path.substr(0, split), path.substr(split + 1));
}

void require_entry_name(const std::string& entry) {
    if (entry.empty())
        throw_runtime_error("The name of a metadata entry cannot be empty");
    if (!schema::is_path_component(entry)) {
        throw_runtime_error(fmt::format(
            "The name of a metadata entry cannot contain '/' or '\\', current is : '{}'", entry));
    }
}

strata::data_group metadata_root(const strata::data_store& acquisition) {
    return format_group(acquisition).retrieve_group(schema::name::metadata);
}

strata::data_group existing_group(const strata::data_store& acquisition, const entry_path& path) {
    const auto format = format_group(acquisition);
    if (!format.exists_group(path.group))
        throw_no_such_group(path.group, ending);
    return format.retrieve_group(path.group);
}

strata::data_group group_to_add_to(const strata::data_store& acquisition, const entry_path& path) {
    return retrieve_or_create_group(format_group(acquisition), path.group);
}

void delete_metadata_group(const strata::data_store& acquisition, const entry_path& path) {
    auto format = format_group(acquisition);
    const auto inner =
        path.group.find_first_not_of('/', std::string_view(schema::name::metadata).size());
    if (inner == std::string::npos)
        throw_runtime_error("The group of all metadata cannot be removed");
    format.delete_group(path.group);
}

bool exists_entry(const strata::data_store& acquisition, const entry_path& path) {
    const auto format = format_group(acquisition);
    return format.exists_group(path.group) && !path.entry.empty() &&
           format.retrieve_group(path.group).exists_attribute(path.entry);
}

strata::data_attribute existing_entry(const strata::data_store& acquisition,
                                      const entry_path& path) {
    const auto group = existing_group(acquisition, path);
    if (path.entry.empty() || !group.exists_attribute(path.entry)) {
        throw_runtime_error(fmt::format("Unable to find the metadata entry '{}' in the group '{}'",
                                        path.entry, path.group));
    }
    return group.retrieve_attribute(path.entry);
}

} // namespace mox::metadata
