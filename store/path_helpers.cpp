#include "store/path_helpers.hpp"

#include <fmt/format.h>
#include <strata/store_error.hpp>

#include "store/swig_error.hpp"

namespace mox {

void throw_no_such_group(std::string_view path, std::string_view ending) {
    throw_runtime_error(
        fmt::format("Impossible to retrieve group with path : '{}'{}", path, ending));
}

void throw_no_such_set_to_delete(std::string_view path) {
    throw_runtime_error(fmt::format("Impossible to delete set with path : '{}'", path));
}

strata::data_group retrieve_group(const strata::data_group& parent, std::string_view path) {
    if (!parent.exists_group(path))
        throw_no_such_group(path);
    return parent.retrieve_group(path);
}

strata::data_group retrieve_group(const strata::data_group& parent, std::string_view first,
                                  std::string_view second) {
    return retrieve_group(parent, fmt::format("{}/{}", first, second));
}

strata::data_group retrieve_group(const strata::data_group& parent, std::string_view first,
                                  std::string_view second, std::string_view third) {
    return retrieve_group(parent, fmt::format("{}/{}/{}", first, second, third));
}

strata::data_group retrieve_or_create_group(strata::data_group parent, std::string_view path) {
    if (parent.exists_group(path))
        return parent.retrieve_group(path);
    try {
        return parent.create_group(path);
    } catch (const strata::store_error& error) { // a path that no group can have
        throw_runtime_error(error.what());
    }
}

void delete_set(strata::data_group group, const strata::data_set& set) {
    const auto name = set.name();
    if (!group.exists_set(name))
        throw_no_such_set_to_delete(name);
    group.delete_set(name);
}

void delete_sets(strata::data_group group) {
    for (const auto& name : group.list_set_children_name())
        group.delete_set(name);
}

void move_set(strata::data_group target, strata::data_group source, const strata::data_set& set,
              const std::string& name) {
    if (set && !target.create_hard_link_internal(name, &set)) {
        throw_runtime_error(
            fmt::format("Impossible to move set '{}' : the name '{}' is taken", set.name(), name));
    }
    delete_set(std::move(source), set);
}

std::vector<strata::data_set> sets_of(const strata::data_group& group) {
    std::vector<strata::data_set> sets;
    auto names = group.list_set_children_name();
    sets.reserve(names.size());
    for (const auto& name : names)
        sets.push_back(group.retrieve_set(name));
    return sets;
}

} // namespace mox
