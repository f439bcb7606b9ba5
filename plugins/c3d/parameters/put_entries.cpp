#include "plugins/c3d/parameters/put_entries.hpp"

#include "plugins/c3d/parameters/put_parameter.hpp"

namespace c3d {

namespace {

bool are_told(const parameter_table& table, parameter_place place,
              const std::vector<std::string>& texts, surplus rule, single_value single) {
    const channel_entries entries(table, place.group, place.name, single);
    if (entries.empty() || !may_stay(entries, texts.size(), rule))
        return false;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (entries.text(i).value_or("") != texts[i])
            return false;
    }
    return true;
}

} // namespace

bool may_stay(const channel_entries& entries, std::size_t channels, surplus rule) noexcept {
    return rule == surplus::kept || entries.hold_for_all() || entries.count() == channels;
}

void put_entries(parameter_tree& tree, parameter_place place, const std::vector<std::string>& texts,
                 std::size_t least_width, surplus rule, single_value single) {
    const bool is_missing = !tree.reach(place.group).find(place.name);
    if (is_missing && texts.empty())
        return;
    if (!are_told(tree.as_table(), place, texts, rule, single))
        put_texts(tree.reach(place.group), place.name, texts, least_width);
}

} // namespace c3d
