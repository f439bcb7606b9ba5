#include "store/python.hpp"

#include "api/devices/platforms.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>

#include <fmt/format.h>

#include "acquisition/files/unread_parts.hpp"
#include "api/devices/sample_rows.hpp"
#include "schema/analog_pairing.hpp"
#include "schema/force_platform_table.hpp"
#include "schema/names.hpp"
#include "schema/partial_reading.hpp"
#include "schema/plate_frame.hpp"
#include "store/dictionary.hpp"
#include "store/python_read.hpp"
#include "store/swig_error.hpp"

namespace mox::devices {

namespace {

constexpr std::size_t frame_edge = 4; // of a homogeneous matrix

py_ref fixed(py_ref array) {
    PyArray_CLEARFLAGS(array.array(), NPY_ARRAY_WRITEABLE);
    return array;
}

/// The labels of its channels where these were left out when the file was read, otherwise None.
py_ref unread_labels(const schema::force_platform& platform, const strata::data_group& root) {
    if (!lacks_analogs(root))
        return py_ref::none();
    const auto of_analogs = schema::unread_of_file(root).labels_of(schema::name::analogs);
    auto list = py_ref::checked(PyList_New(0));
    for (const auto number : platform.channels) {
        const auto index = static_cast<std::size_t>(number) - 1; // huge for the unused 0
        if (index < of_analogs.size() &&
            PyList_Append(list.get(), text_to_python(of_analogs[index]).get()) < 0)
            throw python_error{};
    }
    return list;
}

py_ref corner_rows(const schema::force_platform& platform) {
    if (!platform.corners)
        return fixed(numbers_as_array(nullptr, 4, 3));
    std::array<double, 12> rows{};
    auto* row = rows.data();
    for (const auto& corner : *platform.corners)
        row = std::ranges::copy(corner, row).out;
    return fixed(numbers_as_array(rows.data(), 4, 3));
}

py_ref origin_of(const schema::force_platform& platform) {
    return fixed(numbers_as_array(platform.origin ? platform.origin->data() : nullptr, 3));
}

py_ref calibration_of(const schema::force_platform& platform) {
    const auto& matrix = platform.calibration;
    if (matrix.size == 0)
        return py_ref::none();
    const auto size = static_cast<std::int64_t>(matrix.size);
    return fixed(numbers_as_array(matrix.elements.data(), size, size));
}

py_ref frame_of(const schema::force_platform& platform) {
    const auto frame = platform.corners ? schema::frame_of_corners(*platform.corners)
                                        : std::optional<schema::plate_frame>();
    std::array<double, frame_edge * frame_edge> matrix{};
    if (frame) {
        for (std::size_t row = 0; row < 3; ++row) {
            const std::array numbers{frame->x[row], frame->y[row], frame->z[row],
                                     frame->centre[row]};
            for (std::size_t column = 0; column < frame_edge; ++column)
                matrix[frame_edge * row + column] = numbers[column];
        }
        matrix.back() = 1.0;
    }
    return fixed(numbers_as_array(frame ? matrix.data() : nullptr, frame_edge, frame_edge));
}

} // namespace

const platform_state& platform_at(const std::vector<platform_state>& platforms, int index) {
    if (index < 0 || static_cast<std::size_t>(index) >= platforms.size()) {
        throw swig_error(error_code::index,
                         fmt::format("there is no force platform {}: the trial has {}", index,
                                     platforms.size()));
    }
    return platforms[static_cast<std::size_t>(index)];
}

py_ref platform_count(strata::data_store acquisition) {
    return py_ref::checked(PyLong_FromSize_t(describe_platforms(acquisition.root()).size()));
}

py_ref platform_description(strata::data_store acquisition, int index) {
    const auto root = acquisition.root();
    const auto platforms = describe_platforms(root);
    const auto& platform = platform_at(platforms, index).described;
    auto description = py_ref::checked(PyDict_New());
    set_item(description.get(), "type", py_ref::checked(PyLong_FromLongLong(platform.type)));
    set_item(description.get(), "unread", unread_labels(platform, root));
    set_item(description.get(), "corners", corner_rows(platform));
    set_item(description.get(), "origin", origin_of(platform));
    set_item(description.get(), "calibration", calibration_of(platform));
    set_item(description.get(), "frame", frame_of(platform));
    return description;
}

std::vector<std::optional<strata::data_set>> platform_channels(strata::data_store acquisition,
                                                               int index) {
    const auto root = acquisition.root();
    const auto platforms = describe_platforms(root);
    const auto& platform = platform_at(platforms, index).described;
    std::vector<std::optional<strata::data_set>> channels;
    for (auto& set : channels_by_place(platform, schema::pair_analogs(root)))
        channels.push_back(set ? std::optional(std::move(set)) : std::nullopt);
    return channels;
}

} // namespace mox::devices
