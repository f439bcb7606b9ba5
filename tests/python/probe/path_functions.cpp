#include "store/python.hpp"

#include <string>

#include <strata/data_store.hpp>

#include "module/function_row.hpp"
#include "module/overload.hpp"
#include "store/attribute_rebuild.hpp"
#include "store/path_helpers.hpp"
#include "tests/python/probe/functions.hpp"
#include "tests/python/probe/natives.hpp"
#include "tests/python/probe/places.hpp"

namespace mox::probe {

namespace {

/// Name of the group that a path of one, two or three components leads to.
std::string retrieve(strata::data_store store, const std::string& path) {
    return retrieve_group(store.root(), path).name();
}
std::string retrieve(strata::data_store store, const std::string& first,
                     const std::string& second) {
    return retrieve_group(store.root(), first, second).name();
}
std::string retrieve(strata::data_store store, const std::string& first, const std::string& second,
                     const std::string& third) {
    return retrieve_group(store.root(), first, second, third).name();
}

std::string retrieve_or_create(strata::data_store store, const std::string& path) {
    return retrieve_or_create_group(store.root(), path).name();
}

/// Deletes from the group at `group_path` a set that is held by whatever group.
void delete_set(strata::data_store store, const std::string& group_path,
                const std::string& set_path) {
    mox::delete_set(group_at(store, group_path), set_at(store, set_path));
}

void move_set(strata::data_store store, const std::string& target, const std::string& source,
              const std::string& name, const std::string& new_name) {
    const auto group = group_at(store, source);
    mox::move_set(group_at(store, target), group, group.retrieve_set(name), new_name);
}

void change_extent(strata::data_store store, const std::string& path, const std::string& name,
                   PyObject* dimensions) {
    mox::change_extent(group_at(store, path), name, integers_from(dimensions));
}

void change_type(strata::data_store store, const std::string& path, const std::string& name,
                 int type) {
    change_element_type(group_at(store, path), name, static_cast<strata::data_type>(type));
}

} // namespace

std::vector<PyMethodDef> path_functions() {
    using strata::data_store;
    using text = const std::string&;
    return {
        function_row<"retrieve_group", overload<std::string(data_store, text)>(&retrieve),
                     overload<std::string(data_store, text, text)>(&retrieve),
                     overload<std::string(data_store, text, text, text)>(&retrieve)>(),
        function_row<"retrieve_or_create_group", &retrieve_or_create>(),
        function_row<"delete_set", &delete_set>(),
        function_row<"move_set", &move_set>(),
        function_row<"change_extent", &change_extent>(),
        function_row<"change_type", &change_type>(),
    };
}

} // namespace mox::probe
