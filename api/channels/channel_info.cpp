#include "store/python.hpp"

#include "api/channels/channel_info.hpp"

#include <algorithm>

#include <fmt/format.h>

#include "schema/name_pool.hpp"
#include "schema/names.hpp"
#include "store/dictionary.hpp"
#include "store/python_read.hpp"
#include "store/typed_access.hpp"

namespace mox {

namespace attribute = schema::attribute;

namespace {

std::string unit_text(const strata::data_set& set) {
    auto unit = set.retrieve_attribute(attribute::units);
    if (!unit)
        unit = set.retrieve_attribute(attribute::unit);
    return read<std::string>(unit);
}

} // namespace

std::vector<keyed_set> keyed(std::vector<strata::data_set> sets) {
    std::vector<keyed_set> result;
    result.reserve(sets.size());
    schema::name_pool keys;
    for (auto& set : sets) {
        // Kept: not the label, which scripts may change.
        auto key = keys.take_distinct(set.name());
        result.push_back({std::move(key), std::move(set)});
    }
    return result;
}

py_ref unit_of(const strata::data_set& set) {
    return required_attribute(set, set.exists_attribute(attribute::units) ? attribute::units
                                                                          : attribute::unit);
}

py_ref units_of(const std::vector<keyed_set>& sets, std::string_view tag) {
    auto units = py_ref::checked(PyDict_New());
    if (sets.empty())
        return units;
    const auto first = unit_text(sets.front().set);
    const bool all_equal = std::ranges::all_of(
        sets, [&](const keyed_set& each) { return unit_text(each.set) == first; });
    if (all_equal) {
        set_item(units.get(), std::string_view(fmt::format("ALL{}", tag)), text_to_python(first));
        return units;
    }
    for (const auto& [key, set] : sets)
        set_item(units.get(), std::string_view(key), unit_of(set));
    return units;
}

py_ref attribute_of_each(const std::vector<keyed_set>& sets, const char* attribute) {
    auto values = py_ref::checked(PyDict_New());
    for (const auto& [key, set] : sets)
        set_item(values.get(), std::string_view(key), required_attribute(set, attribute));
    return values;
}

} // namespace mox
