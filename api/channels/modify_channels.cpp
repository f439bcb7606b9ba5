#include "store/python.hpp"

#include "api/channels/modify_channels.hpp"

#include <algorithm>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <strata/access/find_set.hpp>

#include "acquisition/channels/channels.hpp"
#include "acquisition/channels/find_point_kind.hpp"
#include "acquisition/time_base/sampling.hpp"
#include "api/channels/channel_handle.hpp"
#include "api/channels/channel_kinds.hpp"
#include "api/channels/channel_numbering.hpp"
#include "api/channels/matrix_check.hpp"
#include "api/channels/remove_channels.hpp"
#include "api/channels/values_matrix.hpp"
#include "api/channels/write_channels.hpp"
#include "schema/channel_names.hpp"
#include "schema/names.hpp"
#include "store/path_helpers.hpp"
#include "store/swig_error.hpp"
#include "store/typed_access.hpp"

namespace mox::channels {

namespace attribute = schema::attribute;

namespace {

constexpr std::string_view unit_of_analogs = "V"; // what channels of different units all begin as

bool is_analog(const strata::data_group& group) {
    return group.name() == schema::name::analogs_export;
}

/// The groups whose channels are numbered in one sequence with those of `group`.
std::vector<strata::data_group> numbered_with(const strata::data_store& acquisition,
                                              const strata::data_group& group) {
    if (is_analog(group))
        return {group};
    return point_groups(acquisition.root());
}

/// The units that channels of `group` name, in the order of the first ones that do; some more than
/// once where a unit is stored as something else than a text.
std::vector<std::string> known_units(const strata::data_group& group) {
    auto units = strata::different_texts(group, attribute::unit);
    if (!units) {
        units.emplace();
        for (const auto& channel : sets_of(group))
            units->push_back(read<std::string>(channel.retrieve_attribute(attribute::unit)));
    }
    std::erase_if(*units, [](const std::string& unit) {
        return unit.empty() || unit == schema::unknown_unit;
    });
    return *std::move(units);
}

std::string unit_of_new_channel(const strata::data_group& group) {
    const auto units = known_units(group);
    if (is_analog(group)) {
        // Sensors of several kinds stand side by side: only what all agree on is theirs.
        const bool agree =
            !units.empty() && std::ranges::count(units, units.front()) == std::ranges::ssize(units);
        return agree ? units.front() : std::string(unit_of_analogs);
    }
    return units.empty() ? std::string(find_point_kind_of_group(group.name())->usual_unit)
                         : units.front();
}

/// A name that `group` has neither a set nor a group for.
std::string unused_name(const strata::data_group& group, const std::string& label) {
    auto name = schema::path_component(label);
    for (int number = 2; group.exists_set(name) || group.exists_group(name); ++number)
        name = fmt::format("{}_{}", schema::path_component(label), number);
    return name;
}

/// A channel for `group`, described, without samples of its own.
strata::data_set new_channel(const strata::data_store& acquisition, const strata::data_group& group,
                             const std::string& label) {
    const auto name = unused_name(group, label);
    const auto index = channel_count(numbered_with(acquisition, group));
    const auto unit = unit_of_new_channel(group);
    auto channel = is_analog(group) ? make_analog_channel(group, name, index, {})
                                    : make_channel(group, name, index, {});
    if (!is_analog(group)) {
        const auto* kind = find_point_kind_of_group(group.name());
        create_text(channel, attribute::metric_type, std::string(kind->word));
    }
    write_or_create(channel, attribute::label, label);
    write_or_create(channel, attribute::unit, unit);
    return channel;
}

} // namespace

strata::data_set append(strata::data_store acquisition, const std::string& kind,
                        const std::string& label, PyObject* matrix) {
    const auto array = as_array(matrix);
    const auto group = group_of_kind(acquisition, kind);
    if (label.empty())
        throw swig_error(error_code::value, "A new channel needs a label");
    const auto components = components_of(group);
    const auto values = checked_matrix(array, samples_of(group), 1, components);
    auto channel = new_channel(acquisition, group, label);
    write_channels_in_order({channel}, values, components);
    add_channel(group, channel);
    return group.retrieve_set(channel.name());
}

void remove(strata::data_store acquisition, strata::data_set channel) {
    const auto holder = holder_of(acquisition, channel);
    if (is_analog(holder))
        remove_analog(acquisition, channel);
    else
        remove_point(acquisition, holder, channel);
}

void set_all_values(strata::data_store acquisition, const std::string& kind, PyObject* matrix) {
    const auto array = as_array(matrix);
    const auto groups = groups_of_kind(acquisition, kind);
    const auto sets = in_index_order(channels_of(groups));
    const auto components = components_of(groups.front());
    write_channels_in_order(
        sets, checked_matrix(array, samples_of(groups.front()), sets.size(), components),
        components);
}

py_ref all_values(strata::data_store acquisition, const std::string& kind) {
    return values_matrix(channels_of(groups_of_kind(acquisition, kind)));
}

} // namespace mox::channels
