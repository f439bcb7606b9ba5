#include "plugins/data_modifier/split_parameters.hpp"

#include <algorithm>
#include <array>
#include <string_view>

#include "plugins/data_modifier/split_error.hpp"
#include "schema/computations.hpp"
#include "schema/names.hpp"

namespace data_modifier {

namespace argument = schema::argument;

namespace {

// Attributes that tell where a channel comes from and when it was sampled are not for splits to
// choose.
constexpr std::array<std::string_view, 3> reserved_destinations{
    schema::attribute::relative_set_index, schema::attribute::sample_rate,
    schema::attribute::start_time};

[[noreturn]] void throw_bad_member(const std::string& member, const std::string& expected) {
    throw split_error{"The parameter '" + member + "' is not " + expected};
}

std::string required_path(const anvil::json& parameters, const std::string& member) {
    const auto found = parameters.find(member);
    if (found == parameters.end())
        throw split_error{"The parameter '" + member + "' is missing"};
    if (!found->is_string() || found->get_ref<const std::string&>().empty())
        throw_bad_member(member, "a path");
    return found->get<std::string>();
}

std::unordered_set<std::string> parse_filter(const anvil::json& labels) {
    std::unordered_set<std::string> filter;
    if (!labels.is_array())
        throw_bad_member(argument::labels_filter, "an array of texts");
    for (const auto& label : labels) {
        if (!label.is_string())
            throw_bad_member(argument::labels_filter, "an array of texts");
        filter.insert(label.get<std::string>());
    }
    return filter;
}

void require_free_destination(const std::vector<attribute_split>& splits,
                              const std::string& destination) {
    const bool taken =
        std::ranges::find(splits, destination, &attribute_split::destination) != splits.end();
    if (taken ||
        std::ranges::find(reserved_destinations, destination) != reserved_destinations.end()) {
        throw split_error{"The parameter 'SourceAttributesSplit' cannot give a value to '" +
                          destination + "'" + (taken ? " twice" : "")};
    }
}

std::vector<attribute_split> parse_attributes(const anvil::json& attributes) {
    std::vector<attribute_split> splits;
    if (!attributes.is_object())
        throw_bad_member(argument::attributes_split, "an object of texts");
    for (const auto& [source, destination] : attributes.items()) {
        if (!destination.is_string())
            throw_bad_member(argument::attributes_split, "an object of texts");
        require_free_destination(splits, destination.get<std::string>());
        splits.push_back({source, destination.get<std::string>()});
    }
    return splits;
}

} // namespace

split_parameters parse_split_parameters(const anvil::json& parameters) {
    split_parameters parsed;
    parsed.source_set = required_path(parameters, argument::source_set);
    parsed.destination_group = required_path(parameters, argument::destination_group);
    if (const auto filter = parameters.find(argument::labels_filter); filter != parameters.end()) {
        parsed.labels_filter = parse_filter(*filter);
    }
    if (const auto splits = parameters.find(argument::attributes_split);
        splits != parameters.end()) {
        parsed.attributes = parse_attributes(*splits);
    }
    return parsed;
}

} // namespace data_modifier
