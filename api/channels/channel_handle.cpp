#include "store/python.hpp"

#include "api/channels/channel_handle.hpp"

#include <array>
#include <cstdint>

#include <fmt/format.h>
#include <strata/access/fill_matrix.hpp>
#include <strata/access/same_set.hpp>

#include "acquisition/channels/channels.hpp"
#include "api/channels/matrix_check.hpp"
#include "api/channels/write_channels.hpp"
#include "api/points/residuals.hpp"
#include "schema/names.hpp"
#include "store/path_helpers.hpp"
#include "store/store_log.hpp"
#include "store/swig_error.hpp"
#include "store/typed_access.hpp"

namespace mox::channels {

namespace attribute = schema::attribute;

namespace {

[[noreturn]] void throw_gone(const strata::data_set& channel) {
    PyErr_Format(PyExc_KeyError, "the channel '%s' was removed from the trial",
                 read<std::string>(channel.retrieve_attribute(attribute::label)).c_str());
    throw python_error{};
}

/// The groups of `acquisition` that hold channels.
std::vector<strata::data_group> device_groups(const strata::data_store& acquisition) {
    auto groups = point_groups(acquisition.root());
    groups.push_back(retrieve_group(acquisition.root(), schema::analogs_export));
    return groups;
}

bool knows_by_name(const strata::data_group& group, const strata::data_set& channel) {
    const auto name = channel.name();
    return group.exists_set(name) && same_set(group.retrieve_set(name), channel);
}

const char* checked_text_name(const std::string& name) {
    for (const char* known : {attribute::label, attribute::unit, attribute::description}) {
        if (name == known)
            return known;
    }
    throw swig_error(error_code::value, fmt::format("A channel has no text '{}'", name));
}

struct channel_extent {
    std::uint64_t components;
    std::uint64_t samples;
};

channel_extent extent_of(const strata::data_set& channel) {
    const auto shape = channel.shape(false);
    const auto& dimensions = shape.dimensions();
    if (dimensions.size() != 3)
        throw_system_error(
            fmt::format("The set '{}' does not have the form of a channel", channel.name()));
    return {static_cast<std::uint64_t>(dimensions[0]), static_cast<std::uint64_t>(dimensions[2])};
}

void copy_if_there(strata::data_set target, const strata::data_set& source, const char* name) {
    if (source.exists_attribute(name))
        target.copy_attribute(source.retrieve_attribute(name));
    else if (target.exists_attribute(name))
        target.delete_attribute(name);
}

} // namespace

strata::data_group holder_of(const strata::data_store& acquisition,
                             const strata::data_set& channel) {
    const auto groups = device_groups(acquisition);
    for (const auto& group : groups) {
        if (knows_by_name(group, channel))
            return group;
    }
    throw_gone(channel);
}

std::string kind(strata::data_store acquisition, strata::data_set channel) {
    const auto name = holder_of(acquisition, channel).name();
    return name == schema::name::analogs_export ? schema::name::analogs : name;
}

py_ref index(strata::data_store acquisition, strata::data_set channel) {
    (void)holder_of(acquisition, channel);
    return py_ref::checked(PyLong_FromLong(
        read<std::int32_t>(channel.retrieve_attribute(attribute::relative_set_index))));
}

std::string text(strata::data_store acquisition, strata::data_set channel,
                 const std::string& name) {
    (void)holder_of(acquisition, channel);
    return read<std::string>(channel.retrieve_attribute(checked_text_name(name)));
}

void set_text(strata::data_store acquisition, strata::data_set channel, const std::string& name,
              const std::string& text) {
    (void)holder_of(acquisition, channel);
    write_or_create(channel, checked_text_name(name), text);
}

double rate(strata::data_store acquisition, strata::data_set channel) {
    (void)holder_of(acquisition, channel);
    return read<double>(channel.retrieve_attribute(attribute::sample_rate));
}

py_ref shape(strata::data_store acquisition, strata::data_set channel) {
    (void)holder_of(acquisition, channel);
    const auto [components, samples] = extent_of(channel);
    const auto count = static_cast<Py_ssize_t>(samples);
    return py_ref::checked(components == 1
                               ? Py_BuildValue("(n)", count)
                               : Py_BuildValue("(nn)", count, static_cast<Py_ssize_t>(components)));
}

py_ref values(strata::data_store acquisition, strata::data_set channel) {
    (void)holder_of(acquisition, channel);
    const auto [components, samples] = extent_of(channel);
    std::array<npy_intp, 2> shape{static_cast<npy_intp>(samples),
                                  static_cast<npy_intp>(components)};
    auto array =
        py_ref::checked(PyArray_SimpleNew(components == 1 ? 1 : 2, shape.data(), NPY_DOUBLE));
    const std::array<strata::matrix_columns, 1> columns{{{channel, 0, 0}}};
    if (!strata::fill_matrix(columns, samples, components,
                             static_cast<double*>(PyArray_DATA(array.array()))))
        throw_system_error(fmt::format("The channel '{}' cannot be read", channel.name()));
    PyArray_CLEARFLAGS(array.array(), NPY_ARRAY_WRITEABLE);
    return array;
}

void set_values(strata::data_store acquisition, strata::data_set channel, PyObject* matrix) {
    const auto array = as_array(matrix);
    const auto holder = holder_of(acquisition, channel);
    const auto components = components_of(holder);
    write_channels_in_order({channel}, checked_matrix(array, samples_of(holder), 1, components),
                            components);
}

void multiply_scale(strata::data_store acquisition, strata::data_set channel, double factor) {
    if (components_of(holder_of(acquisition, channel)) != 1)
        throw swig_error(error_code::value, "a point has no scale");
    if (!channel.exists_attribute(attribute::scale))
        return;
    const auto scale = read<double>(channel.retrieve_attribute(attribute::scale));
    write_or_create(channel, attribute::scale, static_cast<float>(scale * factor));
}

void carry(strata::data_store acquisition, strata::data_set channel, strata::data_store source,
           strata::data_set original) {
    const auto holder = holder_of(acquisition, channel);
    (void)holder_of(source, original);
    copy_if_there(channel, original, attribute::unit);
    copy_if_there(channel, original, attribute::description);
    if (components_of(holder) == 1) {
        for (const char* name : {attribute::scale, attribute::offset, attribute::gain})
            copy_if_there(channel, original, name);
    } else {
        points::carry_residuals(acquisition, channel, source, original);
    }
}

} // namespace mox::channels
