#include "plugins/data_modifier/split_set.hpp"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <strata/plugin/channel_buffer.hpp>
#include <strata/plugin/status_of.hpp>

#include "plugins/data_modifier/attribute_column.hpp"
#include "plugins/data_modifier/channel_names.hpp"
#include "plugins/data_modifier/destination_group.hpp"
#include "plugins/data_modifier/split_error.hpp"
#include "plugins/data_modifier/split_parameters.hpp"
#include "plugins/data_modifier/split_source.hpp"
#include "schema/names.hpp"
#include "schema/read_attribute.hpp"
#include "schema/write_attribute.hpp"

namespace data_modifier {

namespace attribute = schema::attribute;

namespace {

/// Attributes of every channel set, in order of creation.
struct channel_columns {
    attribute_column description;
    attribute_column label;
    attribute_column unit;
    std::vector<attribute_column> others;
};

channel_columns read_columns(const split_source& source,
                             const std::vector<attribute_split>& splits) {
    const auto column = [&](const char* name, const char* otherwise) {
        const auto split = std::ranges::find(splits, name, &attribute_split::destination);
        return attribute_column{
            name, source.set.retrieve_attribute(split == splits.end() ? otherwise : split->source)};
    };
    channel_columns columns{column(attribute::description, ""),
                            column(attribute::label, attribute::labels),
                            column(attribute::unit, ""),
                            {}};
    for (const auto& split : splits) {
        const auto is_split = [&](const attribute_column& fixed) {
            return fixed.name() == split.destination;
        };
        if (is_split(columns.description) || is_split(columns.label) || is_split(columns.unit))
            continue;
        columns.others.emplace_back(split.destination, source.set.retrieve_attribute(split.source));
    }
    return columns;
}

/// Makes a number an attribute of a group or a set, in the place of one of that name.
template <typename Owner, typename Number>
void give_number(Owner& owner, const char* name, Number value) {
    if (owner.exists_attribute(name))
        owner.delete_attribute(name);
    schema::write_number(owner, name, value);
}

void make_channel(const split_source& source, const channel_columns& columns, std::uint64_t channel,
                  strata::data_group& group, const std::string& name) {
    std::vector samples{strata::share_channel(source.set, channel)};
    auto set = strata::create_channel_set(group, name, source.components, source.samples,
                                          std::move(samples));

    columns.description.create_on(set, channel);
    give_number(set, attribute::relative_set_index, static_cast<std::int32_t>(channel));
    columns.label.create_on(set, channel);
    columns.unit.create_on(set, channel);
    give_number(set, attribute::sample_rate, source.sample_rate);
    give_number(set, attribute::start_time, source.start_time_s);
    for (const auto& column : columns.others)
        column.create_on(set, channel);

    for (const auto& row_attribute : source.row_attributes) {
        if (set.exists_attribute(row_attribute))
            continue;
        auto row = strata::share_row(source.set.retrieve_attribute(row_attribute), channel);
        strata::create_row_attribute(set, row_attribute, std::move(row));
    }
}

void split(strata::data_group& root, const split_parameters& parameters) {
    const auto source = open_source(root, parameters.source_set);
    const auto columns = read_columns(source, parameters.attributes);

    destination_group destination{root, parameters.destination_group};
    auto& group = destination.group();
    channel_names names{group,
                        schema::read_texts(source.set.retrieve_attribute(attribute::set_names)),
                        source.labels};
    for (std::uint64_t channel = 0; channel < source.channels; ++channel) {
        const auto label = channel < source.labels.size() ? source.labels[channel] : std::string{};
        if (parameters.labels_filter && !parameters.labels_filter->contains(label))
            continue;
        const auto name = names.choose(channel);
        destination.announce(name);
        make_channel(source, columns, channel, group, name);
    }
    give_number(group, attribute::num_samples, source.number_of_samples);
    give_number(group, attribute::sample_rate, source.sample_rate);
    give_number(group, attribute::start_time, source.start_time_s);
    destination.keep();
}

} // namespace

anvil::status split_set_unit::evaluate(strata::data_group& target,
                                       const anvil::json& parameters) const {
    return strata::status_of([&] { split(target, parse_split_parameters(parameters)); },
                             "A set cannot be split : ");
}

} // namespace data_modifier
