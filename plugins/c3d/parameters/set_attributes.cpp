#include "plugins/c3d/parameters/set_attributes.hpp"

#include <limits>
#include <utility>

#include "schema/file_text.hpp"
#include "schema/names.hpp"
#include "schema/read_attribute.hpp"

namespace c3d {

namespace attribute = schema::attribute;

std::string text_of(const strata::data_set& set, const char* attribute) {
    return schema::read_text(set.retrieve_attribute(attribute));
}

std::string label_of(const strata::data_set& set) {
    const auto label =
        set.exists_attribute(attribute::label) ? text_of(set, attribute::label) : set.name();
    return std::string(schema::without_padding(label));
}

std::string known_unit_of(const strata::data_set& set) {
    auto unit = text_of(set, attribute::unit);
    return unit == schema::unknown_unit ? std::string() : unit;
}

std::int64_t relative_index_of(const strata::data_set& set) {
    return schema::read_number<std::int64_t>(set.retrieve_attribute(attribute::relative_set_index))
        .value_or(std::numeric_limits<std::int64_t>::max());
}

} // namespace c3d
