#include "plugins/c3d/points/read_points.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <numeric>
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

/// Of the columns that were read.
void write_texts_of(strata::data_set& set, const char* name, const std::vector<std::string>& texts,
                    const std::vector<std::size_t>& columns) {
    if (columns.size() == texts.size()) {
        schema::write_texts(set, name, texts);
        return;
    }
    std::vector<std::string> read;
    read.reserve(columns.size());
    for (const auto column : columns)
        read.push_back(texts[column]);
    schema::write_texts(set, name, read);
}

std::vector<std::string> types_of(const std::vector<const schema::point_kind*>& kinds) {
    std::vector<std::string> types;
    types.reserve(kinds.size());
    for (const auto* kind : kinds)
        types.emplace_back(kind->word);
    return types;
}

} // namespace

point_texts texts_of_points(const c3d_file& file, const frame_layout& layout) {
    const auto points = static_cast<std::size_t>(layout.points);
    const channel_entries labels(file.parameters, "POINT", "LABELS");
    const channel_entries descriptions(file.parameters, "POINT", "DESCRIPTIONS");
    const point_kinds kinds(file.parameters);
    point_texts texts;
    texts.labels.resize(points);
    texts.kinds.resize(points);
    texts.units.resize(points);
    texts.descriptions.resize(points);
    for (std::size_t i = 0; i < points; ++i) {
        texts.labels[i] = labels.text(i).value_or("");
        texts.kinds[i] = &kinds.kind_of(texts.labels[i]);
        texts.units[i] = kinds.unit_of(i, texts.labels[i]);
        texts.descriptions[i] = descriptions.text(i).value_or("");
    }
    texts.names = schema::distinct_names(texts.labels);
    return texts;
}

std::vector<std::size_t> columns_of(const point_texts& texts, const schema::wanted_kinds& wanted) {
    std::vector<std::size_t> columns(texts.kinds.size());
    std::iota(columns.begin(), columns.end(), std::size_t{0});
    for (const auto& kind : schema::point_kind_table) {
        if (wanted.contain(kind.group_name))
            continue;
        std::erase_if(columns, [&](std::size_t column) { return texts.kinds[column] == &kind; });
    }
    return columns;
}

std::vector<point_target> point_samples::targets() const {
    std::vector<point_target> result(columns.empty() ? 0 : columns.back() + 1);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        result[columns[i]] = {floats_of(coordinates[i]).data(), floats_of(residuals[i]).data()};
    }
    return result;
}

point_samples allocate_points(const frame_layout& layout, std::vector<std::size_t> columns) {
    const auto points = columns.size();
    point_samples samples;
    samples.columns = std::move(columns);
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

void create_points(strata::data_group& data, const frame_layout& layout, const point_texts& texts,
                   point_samples samples) {
    const auto& columns = samples.columns;
    auto set = strata::create_channel_set(data, schema::name::points, 3, layout.frames,
                                          std::move(samples.coordinates));
    write_texts_of(set, attribute::labels, texts.labels, columns);
    write_texts_of(set, attribute::set_names, texts.names, columns);
    write_texts_of(set, attribute::types, types_of(texts.kinds), columns);
    write_texts_of(set, attribute::units, texts.units, columns);
    write_texts_of(set, attribute::descriptions, texts.descriptions, columns);
    if (columns.size() != texts.labels.size())
        schema::write_numbers(set, attribute::columns,
                              std::vector<std::int64_t>(columns.begin(), columns.end()));
    if (!columns.empty())
        strata::create_row_attribute(set, attribute::residuals, std::move(samples.residuals));
    schema::write_number(set, attribute::num_samples, static_cast<std::int64_t>(layout.frames));
    schema::write_number(set, attribute::sample_rate, layout.point_rate);
    schema::write_number(set, attribute::start_time, layout.start_time_s());
}

} // namespace c3d
