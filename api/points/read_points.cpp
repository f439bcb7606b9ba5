#include "store/python.hpp"

#include "api/points/read_points.hpp"

#include <iterator>
#include <vector>

#include <strata/access/set_count.hpp>

#include "acquisition/channels/find_point_kind.hpp"
#include "api/channels/channel_info.hpp"
#include "api/channels/channel_lookup.hpp"
#include "api/channels/values_matrix.hpp"
#include "schema/names.hpp"
#include "store/dictionary.hpp"
#include "store/path_helpers.hpp"
#include "store/python_read.hpp"
#include "store/typed_access.hpp"

namespace mox::points {

namespace attribute = schema::attribute;

namespace {

// A point is stored as components × 1 × frames: squeezed and transposed it is frames × components.
constexpr array_form frames_by_components{.transpose = true, .squeeze = true};

const schema::point_kind& kind_of(std::string_view group_name) {
    return *find_point_kind_of_group(group_name);
}

std::vector<strata::data_set> sets_of_type(const strata::data_store& acquisition,
                                           std::string_view group_name) {
    return sets_of(retrieve_group(acquisition.root(), kind_of(group_name).path));
}

std::vector<strata::data_set> all_sets(const strata::data_store& acquisition) {
    std::vector<strata::data_set> sets;
    for (const auto& kind : schema::point_kind_table) {
        auto of_type = sets_of(retrieve_group(acquisition.root(), kind.path));
        sets.insert(sets.end(), std::make_move_iterator(of_type.begin()),
                    std::make_move_iterator(of_type.end()));
    }
    return sets;
}

py_ref values_of(const std::vector<keyed_set>& sets) {
    auto values = py_ref::checked(PyDict_New());
    for (const auto& [key, set] : sets)
        set_item(values.get(), std::string_view(key), read_as_python(set, frames_by_components));
    return values;
}

outputs<2> read_type(const strata::data_store& acquisition, std::string_view group_name) {
    const auto sets = keyed(sets_of_type(acquisition, group_name));
    auto values = values_of(sets);
    auto info = py_ref::checked(PyDict_New());
    if (!sets.empty()) {
        set_item(info.get(), "frequency",
                 required_attribute(sets.front().set, attribute::sample_rate));
        set_item(info.get(), "units", units_of(sets, kind_of(group_name).tag));
    }
    return {std::move(values), std::move(info)};
}

/// Number of the first frame, in single precision. Kept: counted from 1; moxGetFirstFrame counts
/// from 0.
py_ref first_frame_of(const strata::data_set& set) {
    const auto start = read<float>(set.retrieve_attribute(attribute::start_time));
    const auto rate = read<float>(set.retrieve_attribute(attribute::sample_rate));
    return py_ref::checked(PyFloat_FromDouble(static_cast<double>(start * rate + 1.0F)));
}

outputs<2> read_point(const strata::data_set& set) {
    auto values = read_as_python(set, frames_by_components);
    auto info = py_ref::checked(PyDict_New());
    set_item(info.get(), "frequency", required_attribute(set, attribute::sample_rate));
    set_item(info.get(), "units", unit_of(set));
    set_item(info.get(), "label", required_attribute(set, attribute::label));
    set_item(info.get(), "description", required_attribute(set, attribute::description));
    return {std::move(values), std::move(info)};
}

} // namespace

outputs<2> markers(strata::data_store acquisition) {
    return read_type(acquisition, schema::name::markers);
}
outputs<2> angles(strata::data_store acquisition) {
    return read_type(acquisition, schema::name::angles);
}
outputs<2> forces(strata::data_store acquisition) {
    return read_type(acquisition, schema::name::forces);
}
outputs<2> moments(strata::data_store acquisition) {
    return read_type(acquisition, schema::name::moments);
}
outputs<2> powers(strata::data_store acquisition) {
    return read_type(acquisition, schema::name::powers);
}

outputs<2> all(strata::data_store acquisition) {
    (void)retrieve_group(acquisition.root(), schema::data); // what an error is to name first
    const auto sets = keyed(all_sets(acquisition));
    auto values = values_of(sets);
    auto info = py_ref::checked(PyDict_New());
    if (!sets.empty()) {
        set_item(info.get(), "frequency",
                 required_attribute(sets.front().set, attribute::sample_rate));
        set_item(info.get(), "firstFrame", first_frame_of(sets.front().set));
        set_item(info.get(), "units", units_of(sets, {}));
        set_item(info.get(), "label", attribute_of_each(sets, attribute::label));
        set_item(info.get(), "description", attribute_of_each(sets, attribute::description));
    }
    return {std::move(values), std::move(info)};
}

outputs<2> by_index(strata::data_store acquisition, int index) {
    strata::data_group holder;
    return read_point(
        point_by_index(retrieve_group(acquisition.root(), schema::data), index, holder));
}

outputs<2> by_label(strata::data_store acquisition, const std::string& label) {
    strata::data_group holder;
    return read_point(
        point_by_label(retrieve_group(acquisition.root(), schema::data), label, holder));
}

py_ref markers_values(strata::data_store acquisition) {
    return values_matrix(sets_of_type(acquisition, schema::name::markers));
}
py_ref angles_values(strata::data_store acquisition) {
    return values_matrix(sets_of_type(acquisition, schema::name::angles));
}
py_ref forces_values(strata::data_store acquisition) {
    return values_matrix(sets_of_type(acquisition, schema::name::forces));
}
py_ref moments_values(strata::data_store acquisition) {
    return values_matrix(sets_of_type(acquisition, schema::name::moments));
}
py_ref powers_values(strata::data_store acquisition) {
    return values_matrix(sets_of_type(acquisition, schema::name::powers));
}
py_ref all_values(strata::data_store acquisition) { return values_matrix(all_sets(acquisition)); }

std::string unit(strata::data_store acquisition, const std::string& group_name) {
    // Kept: "Markers", where the setter takes "marker".
    const auto* kind = find_point_kind_of_group(group_name);
    if (!kind)
        return {};
    const auto sets = sets_of_type(acquisition, kind->group_name);
    return sets.empty() ? std::string()
                        : read<std::string>(sets.front().retrieve_attribute(attribute::unit));
}

double number(strata::data_store acquisition) {
    std::size_t count = 0;
    for (const auto& kind : schema::point_kind_table)
        count += strata::set_count(retrieve_group(acquisition.root(), kind.path));
    return static_cast<double>(count);
}

} // namespace mox::points
