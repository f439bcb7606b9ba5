#include "plugins/c3d/points/read_points.hpp"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string>
#include <utility>

#include <strata/data_set.hpp>
#include <strata/data_type.hpp>

#include "plugins/c3d/parameters/channel_entries.hpp"
#include "plugins/c3d/points/point_kinds.hpp"
#include "plugins/c3d/samples/buffer_elements.hpp"
#include "schema/channel_names.hpp"
#include "schema/names.hpp"
#include "schema/write_attribute.hpp"

namespace c3d {

namespace attribute = schema::attribute;

namespace {

void fill(const std::vector<strata::channel_buffer>& buffers, float value) {
    for (const auto& buffer : buffers)
        std::ranges::fill(floats_of(buffer), value);
}

void write_descriptive_texts(strata::data_set& set, const c3d_file& file, std::size_t points) {
    const channel_entries label_entries(file.parameters, "POINT", "LABELS");
    const channel_entries description_entries(file.parameters, "POINT", "DESCRIPTIONS");
    const point_kinds kinds(file.parameters);
    std::vector<std::string> labels(points);
    std::vector<std::string> types(points);
    std::vector<std::string> units(points);
    std::vector<std::string> descriptions(points);
    for (std::size_t i = 0; i < points; ++i) {
        labels[i] = label_entries.text(i).value_or("");
        types[i] = kinds.type_of(labels[i]);
        units[i] = kinds.unit_of(i, labels[i]);
        descriptions[i] = description_entries.text(i).value_or("");
    }
    schema::write_texts(set, attribute::labels, labels);
    schema::write_texts(set, attribute::set_names, schema::distinct_names(labels));
    schema::write_texts(set, attribute::types, types);
    schema::write_texts(set, attribute::units, units);
    schema::write_texts(set, attribute::descriptions, descriptions);
}

} // namespace

std::vector<point_target> point_samples::targets() const {
    std::vector<point_target> result(coordinates.size());
    for (std::size_t i = 0; i < result.size(); ++i) {
        result[i] = {floats_of(coordinates[i]).data(), floats_of(residuals[i]).data()};
    }
    return result;
}

point_samples allocate_points(const frame_layout& layout) {
    const auto points = static_cast<std::size_t>(layout.points);
    point_samples samples;
    samples.coordinates =
        strata::channel_buffer::allocate(strata::data_type::float32, 3 * layout.frames, points);
    samples.residuals =
        strata::channel_buffer::allocate(strata::data_type::float32, layout.frames, points);
    if (layout.storage == sample_storage::integer) {
        for (auto& buffer : samples.coordinates)
            buffer.set_scaling(0.0, double{layout.scale});
    }
    return samples;
}

void invalidate(const point_samples& samples) {
    fill(samples.coordinates, std::numeric_limits<float>::quiet_NaN());
    fill(samples.residuals, -1.0F);
}

void create_points(strata::data_group& data, const c3d_file& file, const frame_layout& layout,
                   point_samples samples) {
    const auto points = samples.coordinates.size();
    auto set = strata::create_channel_set(data, schema::name::points, 3, layout.frames,
                                          std::move(samples.coordinates));
    write_descriptive_texts(set, file, points);
    if (points != 0)
        strata::create_row_attribute(set, attribute::residuals, std::move(samples.residuals));
    schema::write_number(set, attribute::num_samples, static_cast<std::int64_t>(layout.frames));
    schema::write_number(set, attribute::sample_rate, layout.point_rate);
    schema::write_number(set, attribute::start_time, layout.start_time_s());
}

} // namespace c3d
