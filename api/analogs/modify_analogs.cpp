#include "store/python.hpp"

#include "api/analogs/modify_analogs.hpp"

#include <utility>

#include "acquisition/channels/channels.hpp"
#include "acquisition/platforms/platform_channel_numbers.hpp"
#include "acquisition/time_base/resize_acquisition.hpp"
#include "acquisition/time_base/sample_agreement.hpp"
#include "acquisition/time_base/sampling.hpp"
#include "api/analogs/read_analogs.hpp"
#include "api/channels/channel_lookup.hpp"
#include "api/channels/channel_numbering.hpp"
#include "api/channels/matrix_check.hpp"
#include "api/channels/remove_channels.hpp"
#include "api/channels/write_channels.hpp"
#include "schema/names.hpp"
#include "store/path_helpers.hpp"
#include "store/typed_access.hpp"

namespace mox::analogs {

namespace attribute = schema::attribute;

namespace {

constexpr std::uint64_t components = 1;

/// Rate of a channel that is added: the point rate in single precision, times the ratio.
double rate_of_new_channel(const strata::data_store& acquisition) {
    const auto point_rate = static_cast<float>(sampling::point_frequency(acquisition));
    const auto ratio = static_cast<float>(sampling::analog_samples_per_frame(acquisition));
    return static_cast<double>(point_rate * ratio);
}

strata::data_set make_channel_of_rate(const strata::data_group& group, const std::string& label,
                                      std::int32_t index, const std::string& description,
                                      double rate) {
    auto set = make_analog_channel(group, label, index, description);
    write_or_create(set, attribute::sample_rate, rate);
    return set;
}

void set_channel_values(const strata::data_group& group, const strata::data_set& set,
                        const py_ref& array) {
    write_channels_in_order({set}, checked_matrix(array, samples_of(group), 1, components),
                            components);
}

/// Rows that the values of all channels may have: as many as there are samples or, after a change
/// of rate, as belong to the frames.
std::uint64_t wanted_samples(const strata::data_store& acquisition, const strata::data_group& group,
                             const py_ref& array) {
    const auto samples = samples_of(group);
    const auto rows = row_count(array);
    return rows && *rows != samples && belong_to_frames(acquisition, *rows) ? *rows : samples;
}

} // namespace

outputs<2> append(strata::data_store acquisition, const std::string& label, PyObject* matrix) {
    return append_described(acquisition, label, matrix, {});
}

outputs<2> append_described(strata::data_store acquisition, const std::string& label,
                            PyObject* matrix, const std::string& description) {
    const auto array = as_array(matrix);
    const auto group = analog_group(acquisition);
    const auto values = checked_matrix(array, samples_of(group), 1, components);
    const auto index = channel_count({group});
    const auto name = label.empty() ? unused_channel_names(group).next(index) : label;
    require_new_channel(group, name);
    const auto rate = rate_of_new_channel(acquisition);
    const auto set = make_channel_of_rate(group, name, index, description, rate);
    write_channels_in_order({set}, values, components);
    add_channel(group, set);
    return all(acquisition);
}

outputs<2> remove_by_index(strata::data_store acquisition, int index) {
    remove_analog(acquisition, channel_by_index(analog_group(acquisition), index));
    return all(acquisition);
}

outputs<2> remove_by_label(strata::data_store acquisition, const std::string& label) {
    remove_analog(acquisition, channel_by_label(analog_group(acquisition), label));
    return all(acquisition);
}

void clear(strata::data_store acquisition) {
    const auto group = analog_group(acquisition);
    platform_channel_numbers platforms(acquisition.root());
    delete_sets(group);
    platforms.follow_channels();
    resize_channels_to_come(acquisition);
}

void set_number(strata::data_store acquisition, int wanted) {
    const auto group = analog_group(acquisition);
    const auto count = channel_count({group});
    if (count > wanted) {
        platform_channel_numbers platforms(acquisition.root());
        shrink_channels({group}, count, wanted);
        platforms.follow_channels();
        return;
    }
    if (count == wanted)
        return; // without asking for a rate
    require_memory_for_channels(static_cast<double>(wanted) - count,
                                static_cast<double>(samples_of(group)));
    const auto rate = rate_of_new_channel(acquisition);
    unused_channel_names names(group);
    for (auto index = count; index < wanted; ++index)
        add_channel(group, make_channel_of_rate(group, names.next(index), index, {}, rate));
}

void set_all_values(strata::data_store acquisition, PyObject* matrix) {
    const auto array = as_array(matrix);
    const auto group = analog_group(acquisition);
    auto sets = sets_of(group);
    const auto samples = wanted_samples(acquisition, group, array);
    const auto values = checked_matrix(array, samples, sets.size(), components);
    sets = in_index_order(std::move(sets));
    if (samples != samples_of(group))
        resize_analogs(acquisition, samples);
    write_channels_in_order(sets, values, components);
}

void set_values_by_index(strata::data_store acquisition, int index, PyObject* matrix) {
    const auto array = as_array(matrix);
    const auto group = analog_group(acquisition);
    set_channel_values(group, channel_by_index(group, index), array);
}

void set_values_by_label(strata::data_store acquisition, std::string& label, PyObject* matrix) {
    const auto array = as_array(matrix);
    const auto group = analog_group(acquisition);
    set_channel_values(group, channel_by_label(group, label), array);
}

} // namespace mox::analogs
