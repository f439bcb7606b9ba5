#include "plugins/c3d/parameters/standard_parameters.hpp"

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <string_view>

#include "plugins/c3d/parameters/channel_entries.hpp"
#include "plugins/c3d/parameters/put_parameter.hpp"

namespace c3d {

namespace {

constexpr std::array<std::string_view, 8> point_order = {
    "USED", "SCALE", "RATE", "DATA_START", "FRAMES", "LABELS", "DESCRIPTIONS", "UNITS"};
constexpr std::array<std::string_view, 10> analog_order = {
    "USED",   "LABELS", "DESCRIPTIONS", "GEN_SCALE", "SCALE",
    "OFFSET", "UNITS",  "RATE",         "FORMAT",    "BITS"};
constexpr std::array<std::string_view, 5> locked_in_point = {"USED", "SCALE", "RATE", "DATA_START",
                                                             "FRAMES"};
constexpr std::array<std::string_view, 4> locked_in_analog = {"USED", "RATE", "FORMAT", "BITS"};
constexpr std::array<std::string_view, 1> platform_order = {"USED"};

/// What a script has made is locked like the rest.
void lock_parameters(written_group& group, std::span<const std::string_view> names) {
    for (auto name : names) {
        if (auto* item = group.find(name))
            item->locked = true;
    }
}

void arrange(written_group& group, std::span<const std::string_view> order) {
    const auto rank = [&](const written_parameter& item) {
        return std::find_if(order.begin(), order.end(),
                            [&](auto name) { return same_name(name, list_name(item.name)); }) -
               order.begin();
    };
    std::stable_sort(group.parameters.begin(), group.parameters.end(),
                     [&](const auto& left, const auto& right) { return rank(left) < rank(right); });
}

} // namespace

void complete_new_parameters(parameter_tree& tree) {
    for (const auto* name : {"LABELS", "DESCRIPTIONS"}) {
        if (!tree.reach("POINT").find(name))
            put_texts(tree.reach("POINT"), name, {}, 4);
    }
    auto& analog = tree.reach("ANALOG");
    if (!analog.find("FORMAT"))
        put_text(analog, "FORMAT", "SIGNED", 8, new_lock::on);
    if (!analog.find("BITS"))
        put_count(analog, "BITS", 12);
    lock_parameters(tree.reach("POINT"), locked_in_point);
    lock_parameters(analog, locked_in_analog);
    arrange(tree.reach("POINT"), point_order);
    arrange(analog, analog_order);
    arrange(tree.reach("FORCE_PLATFORM"), platform_order);
}

} // namespace c3d
