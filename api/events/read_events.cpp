#include "store/python.hpp"

#include "api/events/read_events.hpp"

#include <algorithm>
#include <string>
#include <vector>

#include "api/channels/channel_info.hpp"
#include "api/events/event_sets.hpp"
#include "schema/names.hpp"
#include "store/dictionary.hpp"
#include "store/numpy_types.hpp"
#include "store/path_helpers.hpp"
#include "store/python_read.hpp"
#include "store/typed_access.hpp"

namespace mox::events {

namespace {

constexpr array_form transposed{.transpose = true, .squeeze = false};

/// One element an occurrence, as the four results list them.
struct occurrences {
    std::vector<double> times;
    std::vector<std::string> names;
    std::vector<std::string> descriptions;
    std::vector<int> ids;
};

void add_occurrences(const strata::data_set& set, occurrences& all) {
    std::vector<double> times;
    read_vector(select_all(set), times);
    all.times.insert(all.times.end(), times.begin(), times.end());
    all.names.insert(all.names.end(), times.size(), set.name());
    all.descriptions.insert(
        all.descriptions.end(), times.size(),
        read<std::string>(set.retrieve_attribute(attribute::event_description)));
    all.ids.insert(all.ids.end(), times.size(),
                   read<std::int32_t>(set.retrieve_attribute(attribute::event_icons)));
}

template <typename Number> py_ref to_array(const std::vector<Number>& numbers, int type) {
    auto array =
        new_array(strata::data_shape({static_cast<std::int64_t>(numbers.size())}, false), type);
    std::copy(numbers.begin(), numbers.end(), static_cast<Number*>(PyArray_DATA(array.array())));
    return array;
}

py_ref to_list(const std::vector<std::string>& texts) {
    auto list = py_ref::checked(PyList_New(static_cast<Py_ssize_t>(texts.size())));
    for (std::size_t i = 0; i < texts.size(); ++i)
        PyList_SET_ITEM(list.get(), static_cast<Py_ssize_t>(i), text_to_python(texts[i]).release());
    return list;
}

} // namespace

outputs<2> all(strata::data_store acquisition) {
    const auto sets = keyed(sets_of(event_group(acquisition)));
    auto times = py_ref::checked(PyDict_New());
    for (const auto& [key, set] : sets)
        set_item(times.get(), std::string_view(key), read_as_python(set, transposed));
    auto info = py_ref::checked(PyDict_New());
    set_item(info.get(), "subject", attribute_of_each(sets, attribute::event_subject));
    set_item(info.get(), "units", units_of(sets, "EVENTS"));
    return {std::move(times), std::move(info)};
}

double number(strata::data_store acquisition) {
    std::int32_t count = 0;
    for (const auto& set : sets_of(event_group(acquisition)))
        count += static_cast<std::int32_t>(set.shape(false).element_count());
    return count;
}

outputs<4> values(strata::data_store acquisition) {
    occurrences all;
    if (acquisition.root().exists_group(schema::events)) {
        for (const auto& set : sets_of(event_group(acquisition)))
            add_occurrences(set, all);
    }
    return {to_array(all.times, NPY_DOUBLE), to_list(all.names), to_list(all.descriptions),
            to_array(all.ids, NPY_INT)};
}

} // namespace mox::events
