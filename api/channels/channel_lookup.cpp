#include "api/channels/channel_lookup.hpp"

#include <cstdint>
#include <utility>

#include <fmt/format.h>
#include <strata/access/find_set.hpp>

#include "schema/names.hpp"
#include "schema/point_kind_table.hpp"
#include "store/path_helpers.hpp"
#include "store/swig_error.hpp"
#include "store/typed_access.hpp"

namespace mox {

namespace {

// Kept with two blanks after the colon: scripts compare these texts.
[[noreturn]] void throw_no_such_channel(int index) {
    throw_runtime_error(fmt::format("Unable to find channel with given index :  '{}'", index));
}
[[noreturn]] void throw_no_such_channel(const std::string& label) {
    throw_runtime_error(fmt::format("Unable to find channel with given label :  '{}'", label));
}

std::optional<strata::data_set> found(strata::data_set set) {
    return set ? std::optional(std::move(set)) : std::nullopt;
}

/// The first hit of `find` in the point groups.
template <typename Key, typename Find>
strata::data_set find_point(const strata::data_group& data, const Key& key,
                            strata::data_group& holder, Find&& find) {
    for (const auto& kind : schema::point_kind_table) {
        if (!data.exists_group(kind.group_name))
            throw_no_such_group(kind.path);
        auto group = data.retrieve_group(kind.group_name);
        if (auto set = find(group, key)) {
            holder = std::move(group);
            return *set;
        }
    }
    throw_no_such_channel(key);
}

} // namespace

std::optional<strata::data_set> find_set_by_index(const strata::data_group& group, int index) {
    return found(strata::find_set(
        group, schema::attribute::relative_set_index, std::int32_t{index},
        [index](const auto& attribute) { return read<std::int32_t>(attribute) == index; }));
}

std::optional<strata::data_set> find_set_by_label(const strata::data_group& group,
                                                  const std::string& label) {
    return found(
        strata::find_set(group, schema::attribute::label, label, [&label](const auto& attribute) {
            return read<std::string>(attribute) == label;
        }));
}

strata::data_set channel_by_index(const strata::data_group& group, int index) {
    auto set = find_set_by_index(group, index);
    if (!set)
        throw_no_such_channel(index);
    return *set;
}

strata::data_set channel_by_label(const strata::data_group& group, const std::string& label) {
    auto set = find_set_by_label(group, label);
    if (!set)
        throw_no_such_channel(label);
    return *set;
}

strata::data_set point_by_index(const strata::data_group& data, int index,
                                strata::data_group& holder) {
    return find_point(data, index, holder, find_set_by_index);
}

strata::data_set point_by_label(const strata::data_group& data, const std::string& label,
                                strata::data_group& holder) {
    return find_point(data, label, holder, find_set_by_label);
}

} // namespace mox
