#include "plugins/c3d/parameters/parameter_table.hpp"

#include <algorithm>
#include <array>
#include <unordered_set>
#include <utility>

#include <fmt/format.h>

#include "schema/file_text.hpp"

namespace c3d {

namespace {

constexpr char upper(char character) noexcept {
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A')
                                                : character;
}

constexpr std::size_t no_group = static_cast<std::size_t>(-1);

} // namespace

std::string upper_case(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), upper);
    return result;
}

bool same_name(std::string_view left, std::string_view right) noexcept {
    return left.size() == right.size() &&
           std::equal(left.begin(), left.end(), right.begin(),
                      [](char a, char b) { return upper(a) == upper(b); });
}

parameter_table::parameter_table(section_records records, schema::warnings& notes)
    : parameters_(std::move(records.parameters)) {
    bind_groups(records.groups);
    bind_parameters(records.groups, notes);
    merged_.resize(groups_.size());
    for (const auto& group : groups_) {
        auto& all = merged_[group.first_of_name];
        all.insert(all.end(), group.parameters.begin(), group.parameters.end());
    }
    note_repetitions(notes);
}

void parameter_table::merge_by_name(std::size_t group) {
    const auto [entry, is_first] = by_name_.emplace(upper_case(groups_[group].name), group);
    groups_[group].first_of_name = entry->second;
}

void parameter_table::bind_groups(const std::vector<group_record>& records) {
    groups_.reserve(records.size());
    for (const auto& record : records) {
        parameter_group group;
        group.name = schema::as_utf8(schema::without_padding(record.name));
        group.description = schema::as_utf8(schema::without_padding(record.description));
        group.id = record.id;
        group.locked = record.locked;
        groups_.push_back(std::move(group));
        merge_by_name(groups_.size() - 1);
    }
}

std::size_t parameter_table::group_without_record(std::uint8_t id, schema::warnings& notes) {
    parameter_group group;
    group.name = fmt::format("GROUP_{}", int{id});
    group.id = id;
    group.has_record = false;
    notes.add("there are parameters of group {}, which has no record; they are kept as group '{}'",
              int{id}, group.name);
    groups_.push_back(std::move(group));
    merge_by_name(groups_.size() - 1);
    return groups_.size() - 1;
}

/// A parameter belongs to the group record of its id; where several have that id, to the one
/// nearest before it, else to the first. Records come in any order, so the first is only known once
/// all have been seen.
void parameter_table::bind_parameters(const std::vector<group_record>& records,
                                      schema::warnings& notes) {
    std::array<std::size_t, 128> first_of_id;
    first_of_id.fill(no_group);
    for (std::size_t i = records.size(); i-- > 0;) {
        first_of_id[records[i].id] = i;
    }
    std::size_t passed = 0; // group records before the parameter
    for (std::size_t i = 0; i < parameters_.size(); ++i) {
        while (passed < records.size() && records[passed].offset < parameters_[i].offset)
            ++passed;
        const auto id = parameters_[i].group_id;
        auto owner = first_of_id[id];
        if (passed > 0 && records[passed - 1].id == parameters_[i].group_id)
            owner = passed - 1;
        if (owner == no_group) {
            owner = group_without_record(parameters_[i].group_id, notes);
            first_of_id[id] = owner;
        }
        groups_[owner].parameters.push_back(i);
    }
}

void parameter_table::note_repetitions(schema::warnings& notes) const {
    std::array<bool, 128> seen{};
    for (std::size_t i = 0; i < groups_.size(); ++i) {
        auto& id_seen = seen[groups_[i].id];
        if (id_seen)
            notes.add("several groups have the id {}", int{groups_[i].id});
        id_seen = true;
        if (groups_[i].first_of_name != i) {
            notes.add("there are several groups '{}'; they are read as one", groups_[i].name);
        }
        std::unordered_set<std::string> names;
        for (auto index : merged_[i]) {
            auto name = upper_case(schema::without_padding(parameters_[index].name));
            if (names.insert(std::move(name)).second)
                continue;
            notes.add("byte {}: parameter {}:{} is repeated; the last one counts",
                      parameters_[index].offset, groups_[i].name,
                      schema::as_utf8(parameters_[index].name));
        }
    }
}

bool parameter_table::has_group(std::string_view group) const noexcept {
    return std::any_of(groups_.begin(), groups_.end(),
                       [&](const auto& candidate) { return same_name(candidate.name, group); });
}

const parameter* parameter_table::find(std::string_view group,
                                       std::string_view name) const noexcept {
    for (std::size_t i = 0; i < merged_.size(); ++i) {
        if (groups_[i].first_of_name != i || !same_name(groups_[i].name, group))
            continue;
        const auto& all = merged_[i];
        const auto found = std::find_if(all.rbegin(), all.rend(), [&](auto index) {
            return same_name(schema::without_padding(parameters_[index].name), name);
        });
        return found == all.rend() ? nullptr : &parameters_[*found];
    }
    return nullptr;
}

std::optional<double> parameter_table::number(std::string_view group,
                                              std::string_view name) const noexcept {
    const auto* item = find(group, name);
    return item ? item->number(0) : std::nullopt;
}

std::optional<std::uint64_t> parameter_table::count(std::string_view group,
                                                    std::string_view name) const noexcept {
    const auto* item = find(group, name);
    return item ? item->count(0) : std::nullopt;
}

std::string parameter_table::text(std::string_view group, std::string_view name) const {
    const auto* item = find(group, name);
    if (!item || item->type != element_type::character || item->text_count() == 0)
        return {};
    return schema::as_utf8(item->text(0));
}

std::vector<const parameter*> parameter_table::parts(std::string_view group,
                                                     std::string_view name) const {
    std::vector<const parameter*> found;
    auto part_name = std::string(name);
    while (const auto* part = find(group, part_name)) {
        found.push_back(part);
        part_name = fmt::format("{}{}", name, found.size() + 1);
    }
    return found;
}

} // namespace c3d
