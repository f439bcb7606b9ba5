#include "plugins/c3d/analogs/analog_columns.hpp"

#include <unordered_map>
#include <utility>

#include "plugins/c3d/parameters/set_attributes.hpp"
#include "schema/analog_pairing.hpp"
#include "schema/names.hpp"
#include "schema/read_attribute.hpp"

namespace c3d {

namespace attribute = schema::attribute;

namespace {

/// The columns of the file that was read, by the names of the sets that they became.
std::unordered_map<std::string, std::size_t> columns_read(const strata::data_group& data) {
    std::unordered_map<std::string, std::size_t> columns;
    if (!data.exists_set(schema::name::analogs))
        return columns;
    const auto names = schema::read_texts(
        data.retrieve_set(schema::name::analogs).retrieve_attribute(attribute::set_names));
    for (std::size_t i = 0; i < names.size(); ++i)
        columns.emplace(names[i], i);
    return columns;
}

} // namespace

std::vector<analog_column> analog_columns(const strata::data_group& data) {
    std::vector<analog_column> columns;
    if (!data.exists_group(schema::name::analogs_export))
        return columns;
    const auto read = columns_read(data);
    for (auto& set : schema::sets_by_index(data.retrieve_group(schema::name::analogs_export))) {
        analog_column column;
        column.label = label_of(set);
        column.unit = text_of(set, attribute::unit);
        column.description = text_of(set, attribute::description);
        column.gain =
            schema::read_number<std::int32_t>(set.retrieve_attribute(attribute::gain)).value_or(0);
        column.scale =
            schema::read_number<float>(set.retrieve_attribute(attribute::scale)).value_or(1.0F);
        column.offset =
            schema::read_number<float>(set.retrieve_attribute(attribute::offset)).value_or(0.0F);
        if (const auto found = read.find(set.name()); found != read.end())
            column.column_read = found->second;
        column.set = std::move(set);
        columns.push_back(std::move(column));
    }
    return columns;
}

} // namespace c3d
