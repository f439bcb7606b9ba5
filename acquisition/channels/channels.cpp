#include "acquisition/channels/channels.hpp"

#include <fmt/format.h>
#include <strata/data_store.hpp>

#include "schema/channel_names.hpp"
#include "schema/names.hpp"
#include "schema/point_kind_table.hpp"
#include "store/path_helpers.hpp"
#include "store/swig_error.hpp"
#include "store/typed_access.hpp"

namespace mox {

namespace attribute = schema::attribute;

strata::data_group create_device_group(strata::data_group parent, const std::string& name,
                                       const std::string& device_type) {
    auto group = parent.create_group(name);
    create_text(group, attribute::device_type, device_type);
    write_or_create(group, attribute::num_samples, std::int64_t{0});
    write_or_create(group, attribute::sample_rate, 0.0);
    write_or_create(group, attribute::start_time, 0.0);
    return group;
}

std::uint64_t components_of(const strata::data_group& group) {
    return read<std::string>(group.retrieve_attribute(attribute::device_type)) ==
                   schema::device::mocap
               ? 3
               : 1;
}

std::uint64_t samples_of(const strata::data_group& group) {
    return read<std::uint64_t>(group.retrieve_attribute(attribute::num_samples));
}

std::vector<strata::data_group> point_groups(const strata::data_group& root) {
    std::vector<strata::data_group> groups;
    groups.reserve(schema::point_kind_table.size());
    for (const auto& kind : schema::point_kind_table)
        groups.push_back(retrieve_group(root, kind.path));
    return groups;
}

void throw_channel_exists(const std::string& name) {
    // Kept with its wording: scripts compare this text.
    throw_runtime_error(fmt::format("You are trying to add a channel that already exists : '{}' "
                                    "already exists at given location",
                                    name));
}

void require_new_channel(const strata::data_group& group, const std::string& label) {
    const auto name = schema::path_component(label);
    if (group.exists_set(name) || group.exists_group(name))
        throw_channel_exists(label);
}

strata::data_set make_channel(const strata::data_group& group, const std::string& given_label,
                              std::int32_t index, const std::string& description) {
    const auto label = given_label.empty() ? schema::unnamed_channel(index) : given_label;
    require_new_channel(group, label);
    const strata::data_shape shape({static_cast<std::int64_t>(components_of(group)), 1,
                                    static_cast<std::int64_t>(samples_of(group))},
                                   false);
    const strata::data_store apart;
    auto set =
        apart.root().create_set(schema::path_component(label), shape, strata::data_type::float64);
    create_text(set, attribute::description, description);
    write_or_create(set, attribute::relative_set_index, index);
    create_text(set, attribute::label, label);
    create_text(set, attribute::unit, schema::unknown_unit);
    write_or_create(set, attribute::sample_rate,
                    read<double>(group.retrieve_attribute(attribute::sample_rate)));
    write_or_create(set, attribute::start_time,
                    read<double>(group.retrieve_attribute(attribute::start_time)));
    return set;
}

strata::data_set make_analog_channel(const strata::data_group& group, const std::string& label,
                                     std::int32_t index, const std::string& description) {
    auto set = make_channel(group, label, index, description);
    write_or_create(set, attribute::gain, std::int32_t{0});
    write_or_create(set, attribute::offset, 0.0F);
    write_or_create(set, attribute::scale, 1.0F);
    create_text(set, attribute::metric_type, schema::analog_type);
    return set;
}

void add_channel(strata::data_group group, const strata::data_set& channel) {
    const auto name = channel.name();
    if (!group.create_hard_link_internal(name, &channel))
        throw_channel_exists(name);
}

void create_marker(const strata::data_group& group, const std::string& label, std::int32_t index) {
    const auto marker = make_channel(group, label, index, {});
    create_text(marker, attribute::metric_type, "marker");
    add_channel(group, marker);
}

void add_analog_channels(const strata::data_group& group, std::int32_t first, std::int32_t last) {
    for (auto index = first; index < last; ++index)
        add_channel(group, make_analog_channel(group, schema::unnamed_channel(index), index, {}));
}

} // namespace mox
