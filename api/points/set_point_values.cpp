#include "store/python.hpp"

#include "api/points/set_point_values.hpp"

#include <string_view>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "acquisition/channels/channels.hpp"
#include "acquisition/channels/find_point_kind.hpp"
#include "acquisition/time_base/resize_acquisition.hpp"
#include "acquisition/time_base/sampling.hpp"
#include "api/channels/channel_lookup.hpp"
#include "api/channels/channel_numbering.hpp"
#include "api/channels/matrix_check.hpp"
#include "api/channels/write_channels.hpp"
#include "schema/names.hpp"
#include "store/path_helpers.hpp"
#include "store/swig_error.hpp"
#include "store/typed_access.hpp"

namespace mox::points {

namespace {

constexpr std::uint64_t components = 3;

void set_group_values(const strata::data_store& acquisition, std::string_view word,
                      PyObject* matrix) {
    const auto array = as_array(matrix);
    const auto group = retrieve_group(acquisition.root(), point_kind_of_word(word).path);
    auto sets = sets_of(group);
    const auto values = checked_matrix(array, samples_of(group), sets.size(), components);
    write_channels_in_order(in_index_order(std::move(sets)), values, components);
}

/// Writes one point of the group `holder`.
void set_point_values(const strata::data_set& set, const strata::data_group& holder,
                      const py_ref& array) {
    write_channels_in_order({set}, checked_matrix(array, samples_of(holder), 1, components),
                            components);
}

/// Where the columns of each point begin; RuntimeError when an index lies outside of the matrix.
std::vector<channel_columns> columns_by_index(const std::vector<strata::data_group>& groups,
                                              std::int32_t count) {
    std::vector<channel_columns> channels;
    for (const auto& group : groups) {
        for (const auto& set : sets_of(group)) {
            const auto index = read<std::int32_t>(
                set.retrieve_attribute(schema::attribute::relative_set_index), -1);
            if (index < 0 || index >= count) {
                throw_runtime_error(
                    fmt::format("The index of the point '{}' is outside of the given matrix : {}",
                                set.name(), index));
            }
            channels.push_back({set, static_cast<std::uint64_t>(index) * components});
        }
    }
    return channels;
}

} // namespace

void set_markers_values(strata::data_store acquisition, PyObject* matrix) {
    set_group_values(acquisition, "marker", matrix);
}

void set_forces_values(strata::data_store acquisition, PyObject* matrix) {
    set_group_values(acquisition, "force", matrix);
}

void set_moments_values(strata::data_store acquisition, PyObject* matrix) {
    set_group_values(acquisition, "moment", matrix);
}

void set_powers_values(strata::data_store acquisition, PyObject* matrix) {
    set_group_values(acquisition, "power", matrix);
}

void set_all_values(strata::data_store acquisition, PyObject* matrix) {
    const auto array = as_array(matrix);
    const auto frames = static_cast<std::uint64_t>(sampling::point_frame_number(acquisition));
    const auto groups = point_groups(acquisition.root());
    const auto count = channel_count(groups);
    const auto values =
        checked_matrix(array, frames, static_cast<std::uint64_t>(count), components);
    const auto channels = columns_by_index(groups, count);
    // A change of rate has changed the count of frames, and the points follow here.
    resize_points(acquisition, frames);
    write_channels(channels, values);
}

void set_values_by_index(strata::data_store acquisition, int index, PyObject* matrix) {
    const auto array = as_array(matrix);
    strata::data_group holder;
    const auto set =
        point_by_index(retrieve_group(acquisition.root(), schema::data), index, holder);
    set_point_values(set, holder, array);
}

void set_values_by_label(strata::data_store acquisition, const std::string& label,
                         PyObject* matrix) {
    const auto array = as_array(matrix);
    strata::data_group holder;
    const auto set =
        point_by_label(retrieve_group(acquisition.root(), schema::data), label, holder);
    set_point_values(set, holder, array);
}

} // namespace mox::points
