#include "acquisition/platforms/platform_channel_numbers.hpp"

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>

#include "schema/analog_pairing.hpp"
#include "schema/force_platform_table.hpp"
#include "schema/names.hpp"
#include "schema/read_attribute.hpp"
#include "store/typed_access.hpp"

namespace mox {

namespace {

strata::data_attribute channel_parameter(const strata::data_group& root) {
    return root.exists_group(schema::metadata_force_platform)
               ? root.retrieve_group(schema::metadata_force_platform)
                     .retrieve_attribute(schema::parameter::channel)
               : strata::data_attribute();
}

/// Numbers of the channels that have a set, from 1.
std::unordered_map<std::string, std::size_t>
numbers_of(const std::vector<strata::data_set>& columns) {
    std::unordered_map<std::string, std::size_t> numbers;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i])
            numbers.emplace(columns[i].name(), i + 1);
    }
    return numbers;
}

} // namespace

platform_channel_numbers::platform_channel_numbers(strata::data_group root)
    : root_(std::move(root)) {
    if (channel_parameter(root_))
        columns_ = schema::pair_analogs(root_);
}

void platform_channel_numbers::follow_channels() {
    const auto parameter = channel_parameter(root_);
    auto values = schema::read_numbers<double>(parameter);
    if (columns_.empty() || values.empty())
        return;
    const auto known = static_cast<double>(schema::known_analog_columns(root_));
    const auto last = static_cast<double>(columns_.size());
    const auto numbers = numbers_of(schema::pair_analogs(root_));
    const bool is_byte = parameter.type() == strata::data_type::int8; // without sign in this table
    for (auto& value : values) {
        const auto number = is_byte && value < 0.0 ? value + 256.0 : value;
        if (!(number > known && number <= last))
            continue;
        const auto found = numbers.find(columns_[static_cast<std::size_t>(number) - 1].name());
        value = found == numbers.end() ? 0.0 : static_cast<double>(found->second);
        if (is_byte && value > 127.0)
            value -= 256.0;
    }
    write_vector(parameter, values);
}

} // namespace mox
