#include "plugins/c3d/parameters/parameter_tree.hpp"

#include <algorithm>
#include <array>
#include <span>
#include <utility>

#include "plugins/c3d/bytes/export_error.hpp"

namespace c3d {

namespace {

constexpr std::uint8_t most_groups = 127;

} // namespace

std::size_t written_parameter::element_count() const noexcept {
    std::size_t count = 1;
    for (auto extent : extents)
        count *= extent;
    return count;
}

written_parameter* written_group::find(std::string_view parameter) noexcept {
    const auto found = std::find_if(parameters.begin(), parameters.end(), [&](const auto& item) {
        return same_name(item.name, parameter);
    });
    return found == parameters.end() ? nullptr : &*found;
}

written_parameter& written_group::reach(std::string_view parameter) {
    if (auto* found = find(parameter))
        return *found;
    parameters.emplace_back();
    parameters.back().name = parameter;
    return parameters.back();
}

void written_group::remove(std::string_view parameter) noexcept {
    std::erase_if(parameters, [&](const auto& item) { return same_name(item.name, parameter); });
}

written_group& parameter_tree::add(written_group group) {
    std::array<bool, most_groups + 1> taken{};
    taken[0] = true;
    for (const auto& other : groups_)
        taken[other.id] = true;
    if (group.id > most_groups || taken[group.id]) {
        const auto found = std::find(taken.begin(), taken.end(), false);
        if (found == taken.end()) {
            throw export_error("the group '{}' is one too many: a C3D file has at most {} groups",
                               group.name, most_groups);
        }
        group.id = static_cast<std::uint8_t>(found - taken.begin());
    }
    groups_.push_back(std::move(group));
    return groups_.back();
}

written_group* parameter_tree::find(std::string_view group) noexcept {
    const auto found = std::find_if(groups_.begin(), groups_.end(),
                                    [&](const auto& item) { return same_name(item.name, group); });
    return found == groups_.end() ? nullptr : &*found;
}

written_group& parameter_tree::reach(std::string_view group) {
    if (auto* found = find(group))
        return *found;
    written_group made;
    made.name = group;
    return add(std::move(made));
}

parameter_table parameter_tree::as_table() const {
    section_records records;
    std::uint64_t order = 0; // stands for the place in the file
    for (const auto& group : groups_) {
        records.groups.push_back({order++, group.name, group.description, group.id, group.locked});
        for (const auto& item : group.parameters) {
            parameter seen;
            seen.offset = order++;
            seen.name = item.name;
            seen.description = item.description;
            seen.group_id = group.id;
            seen.locked = item.locked;
            seen.type = item.type;
            seen.dimensions = parameter_dimensions(std::as_bytes(std::span(item.extents)));
            seen.data = item.data;
            records.parameters.push_back(seen);
        }
    }
    schema::warnings none;
    return parameter_table(std::move(records), none);
}

} // namespace c3d
