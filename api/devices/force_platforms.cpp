#include "store/python.hpp"

#include "api/devices/force_platforms.hpp"

#include <array>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "acquisition/channels/channels.hpp"
#include "acquisition/platforms/force_platforms.hpp"
#include "acquisition/time_base/rate_parameter.hpp"
#include "acquisition/time_base/resize_channels.hpp"
#include "acquisition/time_base/sampling.hpp"
#include "api/devices/sample_rows.hpp"
#include "schema/name_pool.hpp"
#include "schema/names.hpp"
#include "store/dictionary.hpp"
#include "store/python_read.hpp"
#include "store/typed_access.hpp"

namespace mox::devices {

namespace attribute = schema::attribute;

namespace {

/// The corners as columns.
py_ref corners_of(const schema::force_platform& platform) {
    if (!platform.corners)
        return numbers_as_array(nullptr, 3, 4);
    std::array<double, 12> columns{};
    for (std::size_t corner = 0; corner < 4; ++corner) {
        for (std::size_t axis = 0; axis < 3; ++axis)
            columns[4 * axis + corner] = (*platform.corners)[corner][axis];
    }
    return numbers_as_array(columns.data(), 3, 4);
}

py_ref matrix_of(const schema::force_platform& platform) {
    const auto& matrix = platform.calibration;
    if (matrix.size == 0)
        return numbers_as_array(nullptr, 0);
    const auto size = static_cast<std::int64_t>(matrix.size);
    return numbers_as_array(matrix.elements.data(), size, size);
}

py_ref describe(const platform_state& platform, const py_ref& channels) {
    const auto& described = platform.described;
    auto dictionary = py_ref::checked(PyDict_New());
    set_item(dictionary.get(), "channels", channels);
    set_item(dictionary.get(), "corners", corners_of(described));
    set_item(dictionary.get(), "origin",
             numbers_as_array(described.origin ? described.origin->data() : nullptr, 3));
    set_item(dictionary.get(), "type", py_ref::checked(PyLong_FromLongLong(described.type)));
    set_item(dictionary.get(), "cal_matrix", matrix_of(described));
    return dictionary;
}

/// Throws std::bad_alloc when the channels of all platforms, one array each, cannot be had.
void require_memory_for(const std::vector<platform_state>& platforms,
                        const strata::data_group& root) {
    double elements = result_overhead * static_cast<double>(platforms.size());
    if (root.exists_group(schema::analogs_export)) {
        const auto samples =
            static_cast<double>(samples_of(root.retrieve_group(schema::analogs_export)));
        for (const auto& platform : platforms)
            elements += samples * static_cast<double>(platform.channels.size());
    }
    require_memory(elements);
}

/// Samples of the channels a second: as the parameters say it, else as the sets do.
double frequency_of(const strata::data_store& acquisition) {
    const auto told = rate_told(acquisition.root(), schema::metadata_analog);
    return told ? *told : sampling::analog_frequency(acquisition);
}

void append(const py_ref& list, const py_ref& item) {
    if (PyList_Append(list.get(), item.get()) < 0)
        throw python_error{};
}

} // namespace

outputs<2> force_platforms(strata::data_store acquisition) {
    const auto platforms = bring_platforms_up_to_date(acquisition.root());
    require_memory_for(platforms, acquisition.root());
    auto descriptions = py_ref::checked(PyList_New(0));
    auto infos = py_ref::checked(PyList_New(0));
    const double frequency = platforms.empty() ? 0.0 : frequency_of(acquisition);
    for (const auto& platform : platforms) {
        auto channels = py_ref::checked(PyDict_New());
        auto units = py_ref::checked(PyDict_New());
        schema::name_pool keys;
        for (const auto& set : platform.channels) {
            const auto key = keys.take_distinct(
                read<std::string>(set.retrieve_attribute(attribute::label), set.name()));
            set_item(channels.get(), std::string_view(key), samples_as_array(set));
            set_item(
                units.get(), std::string_view(key),
                text_to_python(read<std::string>(set.retrieve_attribute(attribute::unit), {})));
        }
        append(descriptions, describe(platform, channels));
        auto info = py_ref::checked(PyDict_New());
        set_item(info.get(), "frequency", py_ref::checked(PyFloat_FromDouble(frequency)));
        set_item(info.get(), "units", units);
        append(infos, info);
    }
    return {std::move(descriptions), std::move(infos)};
}

} // namespace mox::devices
