#include "store/python.hpp"

#include "api/devices/rotations.hpp"

#include <cstdint>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <strata/access/fill_matrix.hpp>

#include "schema/names.hpp"
#include "store/dictionary.hpp"
#include "store/numpy_types.hpp"
#include "store/path_helpers.hpp"
#include "store/python_read.hpp"
#include "store/swig_error.hpp"

namespace mox::devices {

namespace {

constexpr std::int64_t edge = 4; // of a homogeneous matrix

/// The set as (samples, rows, columns); it holds columns, rows, samples.
py_ref matrices_of(const strata::data_set& set) {
    const auto shape = set.shape(false);
    const auto& extents = shape.dimensions();
    if (extents.size() != 3 || extents[0] != edge || extents[1] != edge)
        return read_as_python(set, {.transpose = true, .squeeze = false});
    std::vector<strata::matrix_columns> columns;
    columns.reserve(edge);
    for (std::uint64_t row = 0; row < edge; ++row)
        columns.push_back({set, row, row * edge});
    auto array = new_array(strata::data_shape({extents[2], edge, edge}, false), NPY_DOUBLE);
    if (!strata::fill_matrix(columns, static_cast<std::uint64_t>(extents[2]), edge * edge,
                             static_cast<double*>(PyArray_DATA(array.array()))))
        throw_system_error(fmt::format("The set '{}' holds no numbers", set.name()));
    return array;
}

py_ref rotations_of(const strata::data_group& segment) {
    if (!segment.exists_set(schema::name::segment_rotations)) {
        throw_no_such_group(fmt::format("{}/{}/{}", schema::segments, segment.name(),
                                        schema::name::segment_rotations));
    }
    return matrices_of(segment.retrieve_set(schema::name::segment_rotations));
}

} // namespace

outputs<2> rotations(strata::data_store acquisition) {
    const auto segments = retrieve_group(acquisition.root(), schema::segments);
    auto all = py_ref::checked(PyDict_New());
    for (const auto& name : segments.list_group_children_name()) {
        set_item(all.get(), std::string_view(name), rotations_of(segments.retrieve_group(name)));
    }
    return {std::move(all)};
}

outputs<2> rotation(strata::data_store acquisition, const std::string& label) {
    const auto segments = retrieve_group(acquisition.root(), schema::segments);
    // Not looked up by path: a label is one name, whatever separators it has.
    for (const auto& name : segments.list_group_children_name()) {
        if (name == label)
            return {rotations_of(segments.retrieve_group(name))};
    }
    // Kept with its wording and two blanks after the colon: scripts compare this text.
    throw_runtime_error(fmt::format("Unable to rotation with given label :  '{}'", label));
}

} // namespace mox::devices
