#include "plugins/data_modifier/split_source.hpp"

#include <utility>

#include <strata/data_type.hpp>

#include "plugins/data_modifier/split_error.hpp"
#include "schema/names.hpp"
#include "schema/read_attribute.hpp"

namespace data_modifier {

namespace attribute = schema::attribute;

namespace {

using strata::data_type;

template <typename Number>
Number number_of(const strata::data_set& set, const char* name, Number otherwise) {
    return schema::read_number<Number>(set.retrieve_attribute(name)).value_or(otherwise);
}

std::vector<std::string> find_row_attributes(const strata::data_set& set, std::uint64_t channels) {
    std::vector<std::string> names;
    for (auto& name : set.list_attributes_name()) {
        const auto attribute = set.retrieve_attribute(name);
        const auto shape = attribute.shape();
        const auto& extents = shape.dimensions();
        const bool has_rows =
            extents.size() == 2 && static_cast<std::uint64_t>(extents[0]) == channels;
        if (has_rows && strata::element_size(attribute.type()) != 0)
            names.push_back(std::move(name));
    }
    return names;
}

} // namespace

split_source open_source(const strata::data_group& root, const std::string& path) {
    if (!root.exists_set(path))
        throw split_error{"The source set '" + path + "' does not exist"};
    split_source source;
    source.set = root.retrieve_set(path);

    const auto shape = source.set.shape(false);
    const auto& extents = shape.dimensions();
    if (extents.size() != 3 || strata::element_size(source.set.type()) == 0) {
        throw split_error{"The source set '" + path +
                          "' does not hold numbers by component, channel and sample"};
    }
    source.components = static_cast<std::uint64_t>(extents[0]);
    source.channels = static_cast<std::uint64_t>(extents[1]);
    source.samples = static_cast<std::uint64_t>(extents[2]);

    const auto labels = source.set.retrieve_attribute(attribute::labels);
    const bool labelled = labels && strata::element_kind(labels.type()) == data_type::string;
    if (source.channels > 0 && !labelled) {
        throw split_error{"The source set '" + path +
                          "' has no texts 'Labels', one for each channel"};
    }
    source.labels = schema::read_texts(labels);
    source.number_of_samples =
        number_of(source.set, attribute::num_samples, std::int64_t{extents[2]});
    source.sample_rate = number_of(source.set, attribute::sample_rate, 0.0);
    source.start_time_s = number_of(source.set, attribute::start_time, 0.0);
    source.row_attributes = find_row_attributes(source.set, source.channels);
    return source;
}

} // namespace data_modifier
