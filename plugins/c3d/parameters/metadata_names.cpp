#include "plugins/c3d/parameters/metadata_names.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <unordered_map>

#include <fmt/format.h>

#include "plugins/c3d/parameters/channel_entries.hpp"
#include "schema/channel_names.hpp"
#include "schema/file_text.hpp"
#include "schema/name_pool.hpp"

namespace c3d {

namespace {

/// A group that the format defines, and its parameters without the numbers of lists that go on.
struct defined_group {
    std::string_view name;
    std::string_view parameters; ///< between blanks
};

constexpr std::array<defined_group, 7> defined_groups = {{
    {"POINT", " USED SCALE RATE DATA_START FRAMES LONG_FRAMES LABELS DESCRIPTIONS UNITS X_SCREEN "
              "Y_SCREEN TYPE_GROUPS "
              "ANGLES FORCES MOMENTS POWERS SCALARS ANGLE_UNITS FORCE_UNITS MOMENT_UNITS "
              "POWER_UNITS SCALAR_UNITS "},
    {"ANALOG", " USED LABELS DESCRIPTIONS GEN_SCALE SCALE OFFSET UNITS RATE FORMAT BITS GAIN "},
    {"FORCE_PLATFORM", " USED TYPE ZERO CORNERS ORIGIN CHANNEL CAL_MATRIX UNITS FPCOPPOLY "},
    {"EVENT", " USED CONTEXTS LABELS DESCRIPTIONS TIMES SUBJECTS ICON_IDS GENERIC_FLAGS "},
    {"ANALYSIS", " USED NAMES CONTEXTS SUBJECTS UNITS DESCRIPTIONS VALUES "},
    {"TRIAL", " ACTUAL_START_FIELD ACTUAL_END_FIELD "},
    {"ROTATION", " USED DATA_START RATIO RATE LABELS DESCRIPTIONS "},
}};

const defined_group* find_defined(std::string_view group) {
    const auto found = std::find_if(defined_groups.begin(), defined_groups.end(),
                                    [&](const auto& item) { return same_name(item.name, group); });
    return found == defined_groups.end() ? nullptr : &*found;
}

bool defines(const defined_group& group, std::string_view parameter) {
    const auto base = list_name(parameter);
    return group.parameters.find(fmt::format(" {} ", upper_case(base))) != std::string_view::npos;
}

void name_parameters(const parameter_table& table, const std::vector<std::size_t>& members,
                     const defined_group* defined, metadata_names& names) {
    std::unordered_map<std::string, std::size_t> last_of_name;
    for (auto index : members) {
        const auto name = schema::without_padding(table.parameters()[index].name);
        last_of_name[upper_case(name)] = index;
    }
    schema::name_pool taken;
    for (auto index : members) {
        const auto stored = schema::without_padding(table.parameters()[index].name);
        if (last_of_name[upper_case(stored)] != index)
            continue;
        const bool is_defined = defined && defines(*defined, stored);
        const auto name =
            is_defined ? upper_case(stored) : schema::path_component(schema::as_utf8(stored));
        names.parameters[index] = taken.take_distinct(name.empty() ? schema::unnamed : name);
    }
}

} // namespace

metadata_names metadata_names_of(const parameter_table& table) {
    const auto& groups = table.groups();
    metadata_names names;
    names.groups.resize(groups.size());
    names.parameters.resize(table.parameters().size());
    std::vector<std::vector<std::size_t>> members(groups.size());
    schema::name_pool taken;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        const auto& group = groups[i];
        auto& all = members[group.first_of_name];
        all.insert(all.end(), group.parameters.begin(), group.parameters.end());
        if (group.first_of_name != i) {
            names.groups[i] = names.groups[group.first_of_name];
            continue;
        }
        const auto* defined = find_defined(group.name);
        const auto name = defined ? std::string(defined->name) : schema::path_component(group.name);
        names.groups[i] =
            taken.take_distinct(name.empty() ? fmt::format("GROUP_{}", int{group.id}) : name);
    }
    for (std::size_t i = 0; i < groups.size(); ++i) {
        name_parameters(table, members[i], find_defined(groups[i].name), names);
    }
    return names;
}

} // namespace c3d
