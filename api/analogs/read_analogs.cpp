#include "store/python.hpp"

#include "api/analogs/read_analogs.hpp"

#include <vector>

#include <strata/access/set_count.hpp>

#include "api/analogs/gain_table.hpp"
#include "api/channels/channel_info.hpp"
#include "api/channels/channel_lookup.hpp"
#include "api/channels/values_matrix.hpp"
#include "schema/names.hpp"
#include "store/dictionary.hpp"
#include "store/path_helpers.hpp"
#include "store/python_read.hpp"
#include "store/typed_access.hpp"

namespace mox::analogs {

namespace attribute = schema::attribute;

namespace {

// Kept: a channel of one sample is a number.
constexpr array_form samples_only{.transpose = false, .squeeze = true};

py_ref gain_of(const strata::data_set& set) {
    const auto code = read<std::int32_t>(set.retrieve_attribute(attribute::gain));
    return py_ref::checked(PyFloat_FromDouble(gain_value(code)));
}

py_ref gains_of(const std::vector<keyed_set>& sets) {
    auto gains = py_ref::checked(PyDict_New());
    for (const auto& [key, set] : sets)
        set_item(gains.get(), std::string_view(key), gain_of(set));
    return gains;
}

/// Rate of the first channel, of the group when it has none.
py_ref frequency_of(const strata::data_group& group, const std::vector<keyed_set>& sets) {
    if (!sets.empty())
        return required_attribute(sets.front().set, attribute::sample_rate);
    return py_ref::checked(
        PyFloat_FromDouble(read<double>(group.retrieve_attribute(attribute::sample_rate))));
}

outputs<2> read_channel(const strata::data_set& set) {
    auto samples = read_as_python(set, samples_only);
    auto info = py_ref::checked(PyDict_New());
    set_item(info.get(), "label", required_attribute(set, attribute::label));
    set_item(info.get(), "units", required_attribute(set, attribute::unit));
    set_item(info.get(), "scale", required_attribute(set, attribute::scale));
    set_item(info.get(), "offset", required_attribute(set, attribute::offset));
    set_item(info.get(), "description", required_attribute(set, attribute::description));
    set_item(info.get(), "gain", gain_of(set));
    set_item(info.get(), "frequency", required_attribute(set, attribute::sample_rate));
    return {std::move(samples), std::move(info)};
}

} // namespace

strata::data_group analog_group(const strata::data_store& acquisition) {
    return retrieve_group(acquisition.root(), schema::analogs_export);
}

outputs<2> all(strata::data_store acquisition) {
    const auto group = analog_group(acquisition);
    const auto sets = keyed(sets_of(group));
    auto values = py_ref::checked(PyDict_New());
    for (const auto& [key, set] : sets)
        set_item(values.get(), std::string_view(key), read_as_python(set, samples_only));
    auto info = py_ref::checked(PyDict_New());
    set_item(info.get(), "units", units_of(sets, "ANALOGS"));
    set_item(info.get(), "label", attribute_of_each(sets, attribute::label));
    set_item(info.get(), "offset", attribute_of_each(sets, attribute::offset));
    set_item(info.get(), "scale", attribute_of_each(sets, attribute::scale));
    set_item(info.get(), "description", attribute_of_each(sets, attribute::description));
    set_item(info.get(), "gain", gains_of(sets));
    set_item(info.get(), "frequency", frequency_of(group, sets));
    return {std::move(values), std::move(info)};
}

outputs<2> by_index(strata::data_store acquisition, int index) {
    return read_channel(channel_by_index(analog_group(acquisition), index));
}

outputs<2> by_label(strata::data_store acquisition, const std::string& label) {
    return read_channel(channel_by_label(analog_group(acquisition), label));
}

py_ref values(strata::data_store acquisition) {
    return values_matrix(sets_of(analog_group(acquisition)));
}

double number(strata::data_store acquisition) {
    return static_cast<double>(strata::set_count(analog_group(acquisition)));
}

} // namespace mox::analogs
