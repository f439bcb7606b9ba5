#include "schema/split_record.hpp"

#include <algorithm>

#include "schema/names.hpp"
#include "schema/read_attribute.hpp"
#include "schema/write_attribute.hpp"

namespace schema {

std::uint64_t raw_channels(const strata::data_set& raw) {
    if (!raw)
        return 0;
    const auto shape = raw.shape(false); // components, channels, samples
    return shape.dimensions().size() == 3 ? static_cast<std::uint64_t>(shape.dimensions()[1]) : 0;
}

void record_split(strata::data_set raw, std::uint64_t count) {
    if (raw.exists_attribute(attribute::split_channels))
        raw.delete_attribute(attribute::split_channels);
    // An int64: Python has no reading of a single unsigned number, and shows all attributes of a
    // set.
    write_number(raw, attribute::split_channels, static_cast<std::int64_t>(count));
}

std::uint64_t unsplit_channels(const strata::data_set& raw) {
    const auto all = raw_channels(raw);
    if (all == 0)
        return 0;
    const auto split = read_number<std::int64_t>(raw.retrieve_attribute(attribute::split_channels));
    return all -
           std::min(all, static_cast<std::uint64_t>(std::max<std::int64_t>(split.value_or(0), 0)));
}

} // namespace schema
